#include "platform/qt/QtTcpSocket.h"

#include "platform/qt/Addresses.h"
#include "platform/qt/QtText.h"
#include "platform/qt/TlsConfiguration.h"

#include <QtCore/QTimer>

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <utility>

namespace nordkeep {
namespace {

/// A peer that sends faster than its data is taken is slowed down by the connection itself.
constexpr qint64 kReadBufferSize = 1 << 20;
/// A peer that takes nothing must not fill the memory; the largest honest burst is a client's first load.
constexpr qint64 kMostUnsent = 256 << 20;
constexpr int kFarewellMs = 10000;
constexpr int kAcceptAgainMs = 500;
/// Callers that may wait until the loop comes to them: after a broken network all come at once.
constexpr int kMostWaitingCallers = 1024;
/// More than the system holds of a connection, unless its peer goes on sending meanwhile.
constexpr std::size_t kMostOfRest = 8 << 20;

/// Keep-alive tells the death of a silent peer (power cut, broken line) after about two minutes.
void SetOptions(int descriptor) {
    const auto set = [descriptor](int level, int option, int value) {
        ::setsockopt(descriptor, level, option, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 60);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 6);
    set(IPPROTO_TCP, TCP_NODELAY, 1);
}

/// Whoever is at the other end of a connection that no toolkit socket has taken yet.
Text CallerOf(int descriptor) {
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    auto* const address = reinterpret_cast<sockaddr*>(&peer);
    return ::getpeername(descriptor, address, &size) == 0 ? AddressText(QHostAddress(address)) : Text();
}

Text WaitingIn(int descriptor) {
    Text waiting;
    char buffer[65536];
    while (descriptor >= 0 && waiting.size() < kMostOfRest) {
        const ssize_t size = ::recv(descriptor, buffer, sizeof buffer, MSG_DONTWAIT);
        if (size <= 0) break;
        waiting.append(buffer, static_cast<std::size_t>(size));
    }
    return waiting;
}

bool IsPort(int port) {
    return port >= 0 && port <= 65535;
}

}  // namespace

void QtTcpSocket::Listener::incomingConnection(qintptr descriptor) {
    const std::shared_ptr<WaitingCallers> callers = slot_.callers_;
    const SocketRequest request = callers->Add(static_cast<int>(descriptor));
    const auto onRequest = slot_.events_.connectionRequest;
    slot_.remoteIp_ = CallerOf(static_cast<int>(descriptor));
    if (onRequest) onRequest(request);
    callers->Refuse(request);
}

QtTcpSocket::QtTcpSocket(std::shared_ptr<WaitingCallers> callers) : callers_(std::move(callers)) {
    listener_.setListenBacklogSize(kMostWaitingCallers);
    listener_.setMaxPendingConnections(kMostWaitingCallers);
    // The toolkit stops listening for good when one caller cannot be let in (gone again, too many open
    // files).
    QObject::connect(&listener_, &QTcpServer::acceptError, &tasks_, [this] {
        QTimer::singleShot(kAcceptAgainMs, &listener_, [this] { ResumeAccepting(); });
    });
}

int QtTcpSocket::LocalPort() const {
    if (listener_.isListening()) return listener_.serverPort();
    const int port = socket_ == nullptr ? 0 : socket_->localPort();
    return port != 0 ? port : localPort_;
}

void QtTcpSocket::Close() {
    tasks_.Clear();
    use_ = {};
    EndReturnPath();
    listener_.close();
    localAddress_ = QHostAddress(QHostAddress::AnyIPv4);
    secured_ = nullptr;
    if (QTcpSocket* old = std::exchange(socket_, nullptr)) LetGo(old);
}

void QtTcpSocket::LetGo(QTcpSocket* socket) {
    QObject::disconnect(socket, nullptr, &tasks_, nullptr);
    socket->flush();
    if (socket->state() != QAbstractSocket::ConnectedState || socket->bytesToWrite() == 0) {
        socket->close();
        return socket->deleteLater();
    }
    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(kFarewellMs, socket, &QObject::deleteLater);
    socket->disconnectFromHost();
}

bool QtTcpSocket::Bind(int port, const Text& address) {
    Close();
    const QHostAddress local = LocalAddress(address);
    if (local.isNull()) return Fail(QStringLiteral("The address is no IP address"));
    if (!IsPort(port)) return Fail(QStringLiteral("The port number is out of range"));
    if (!NewCallingSocket()) return false;
    if (!socket_->bind(local, static_cast<quint16>(port), QAbstractSocket::ReuseAddressHint)) {
        const QString text = socket_->errorString();
        Close();
        return Fail(text);
    }
    localPort_ = port;
    localAddress_ = local;
    return true;
}

bool QtTcpSocket::Listen() {
    const QHostAddress address = localAddress_;
    Close();
    if (!IsPort(localPort_)) return Fail(QStringLiteral("The port number is out of range"));
    // The toolkit's server reuses an address that is still in its time of waiting by itself.
    if (listener_.listen(address, static_cast<quint16>(localPort_))) return true;
    return Fail(listener_.errorString());
}

// The toolkit asks before each caller, also while it lets several in one after the other.
void QtTcpSocket::HoldCallers(bool isHeld) {
    listener_.setMaxPendingConnections(isHeld ? 0 : kMostWaitingCallers);
    if (!isHeld) ResumeAccepting();
}

// The toolkit's server crashes when it is asked to and no longer listens.
void QtTcpSocket::ResumeAccepting() {
    if (listener_.isListening()) listener_.resumeAccepting();
}

bool QtTcpSocket::Connect() {
    if (!IsPort(remotePort_) || remotePort_ == 0)
        return Fail(QStringLiteral("The port number is out of range"));
    if (remoteHost_.empty()) return Fail(QStringLiteral("There is no host to connect to"));
    const bool isBound = socket_ != nullptr && socket_->state() == QAbstractSocket::BoundState;
    if (!isBound) {
        Close();
        if (!NewCallingSocket()) return false;
    }
    remoteIp_.clear();
    const auto port = static_cast<quint16>(remotePort_);
    if (secured_ != nullptr) {
        secured_->connectToHostEncrypted(ToQString(remoteHost_), port);
    } else {
        socket_->connectToHost(ToQString(remoteHost_), port);
    }
    return true;
}

void QtTcpSocket::Accept(SocketRequest request) {
    const int descriptor = callers_->Take(request);
    if (descriptor < 0) return;
    Close();
    if (!NewSocket() || !socket_->setSocketDescriptor(descriptor)) {
        if (socket_ != nullptr) Fail(socket_->errorString());
        ::close(descriptor);
        return;
    }
    BeginTalk(descriptor);
    if (secured_ != nullptr) secured_->startServerEncryption();
}

void QtTcpSocket::BeginTalk(int descriptor) {
    SetOptions(descriptor);
    remoteIp_ = AddressText(socket_->peerAddress());
    // What goes by it is not encrypted.
    if (secured_ == nullptr) returnPath_ = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
}

SocketState QtTcpSocket::State() const {
    if (listener_.isListening()) return SocketState::Listening;
    if (socket_ == nullptr) return SocketState::Closed;
    if (use_.hasFailed) return SocketState::Error;
    // Until the close has been told, what waits to be answered still is.
    if (use_.hasEnded) return use_.wasEndTold ? SocketState::Closing : SocketState::Connected;
    switch (socket_->state()) {
        case QAbstractSocket::BoundState:
            return SocketState::Open;
        case QAbstractSocket::HostLookupState:
            return SocketState::Resolving;
        case QAbstractSocket::ConnectingState:
            return SocketState::Connecting;
        case QAbstractSocket::ConnectedState:
            return IsEncrypted() ? SocketState::Connected : SocketState::Connecting;
        case QAbstractSocket::ClosingState:
            return SocketState::Closing;
        default:
            return SocketState::Closed;
    }
}

bool QtTcpSocket::SendData(TextView bytes) {
    if (State() != SocketState::Connected) return Fail(QStringLiteral("The socket is not connected"));
    if (use_.hasEnded) return SendBack(bytes);
    const auto size = static_cast<qint64>(bytes.size());
    if (socket_->bytesToWrite() + size > kMostUnsent) return Fail(QStringLiteral("The peer takes no data"));
    use_.isSending = true;
    socket_->write(bytes.data(), size);
    // At once: the toolkit drops what it still holds when it finds that the peer has closed its half.
    socket_->flush();
    return true;
}

bool QtTcpSocket::SendBack(TextView bytes) {
    const ssize_t sent = ::send(returnPath_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent == static_cast<ssize_t>(bytes.size())) return true;
    return Fail(QStringLiteral("The peer has closed the connection"));
}

void QtTcpSocket::EndReturnPath() {
    if (returnPath_ >= 0) ::close(std::exchange(returnPath_, -1));
}

void QtTcpSocket::Flush() {
    if (socket_ != nullptr) socket_->flush();
}

Text QtTcpSocket::GetData() {
    if (socket_ == nullptr) return {};
    return std::exchange(use_.rest, {}) + socket_->readAll().toStdString();
}

Text QtTcpSocket::GetRest() {
    Text rest = GetData();
    return rest += WaitingIn(returnPath_);
}

std::size_t QtTcpSocket::UnsentBytes() const {
    return socket_ == nullptr ? 0 : static_cast<std::size_t>(socket_->bytesToWrite());
}

bool QtTcpSocket::NewSocket() {
    if (tls_.isOn) {
        QString failure;
        const auto configuration = TlsConfigurationOf(tls_, failure);
        if (!configuration) return Fail(failure);
        socket_ = secured_ = new QSslSocket(&tasks_);
        secured_->setSslConfiguration(*configuration);
        QObject::connect(secured_, &QSslSocket::encrypted, &tasks_, [this] { OnConnected(); });
    } else {
        socket_ = new QTcpSocket(&tasks_);
    }
    WatchToolkitSocket();
    return true;
}

bool QtTcpSocket::NewCallingSocket() {
    if (!NewSocket()) return false;
    if (secured_ == nullptr)
        QObject::connect(socket_, &QTcpSocket::connected, &tasks_, [this] { OnConnected(); });
    return true;
}

bool QtTcpSocket::IsEncrypted() const {
    return secured_ == nullptr || secured_->isEncrypted();
}

void QtTcpSocket::WatchToolkitSocket() {
    socket_->setReadBufferSize(kReadBufferSize);
    QObject::connect(socket_, &QTcpSocket::readyRead, &tasks_, [this] { OnReadyRead(); });
    QObject::connect(socket_, &QTcpSocket::bytesWritten, &tasks_, [this] { OnBytesWritten(); });
    QObject::connect(socket_, &QTcpSocket::disconnected, &tasks_, [this] { OnDisconnected(); });
    const auto onError = [this](QAbstractSocket::SocketError error) { OnError(error); };
    QObject::connect(socket_, &QTcpSocket::errorOccurred, &tasks_, onError);
}

void QtTcpSocket::OnConnected() {
    BeginTalk(static_cast<int>(socket_->socketDescriptor()));
    tasks_.Add([this] { Tell(&SocketEvents::connected); });
}

void QtTcpSocket::OnReadyRead() {
    if (!std::exchange(use_.isArrivalWaiting, true)) tasks_.Add([this] { TellArrival(); });
}

void QtTcpSocket::TellArrival() {
    // From here on the next arrival is told anew, also while the handler of this one waits.
    use_.isArrivalWaiting = false;
    if (socket_->bytesAvailable() > 0 || !use_.rest.empty()) Tell(&SocketEvents::dataArrival);
}

void QtTcpSocket::OnBytesWritten() {
    if (socket_->bytesToWrite() > 0 || !std::exchange(use_.isSending, false)) return;
    if (!events_.sendComplete) return;
    if (!std::exchange(use_.isCompletionWaiting, true)) tasks_.Add([this] { TellCompletion(); });
}

// One for all that was sent meanwhile; while some of it waits, it is told when that has left.
void QtTcpSocket::TellCompletion() {
    use_.isCompletionWaiting = false;
    if (socket_->bytesToWrite() == 0) Tell(&SocketEvents::sendComplete);
}

// The toolkit tells a peer's close twice, as an error and as a disconnection; a broken connection too.
void QtTcpSocket::OnError(QAbstractSocket::SocketError error) {
    // When a peer that has gone cannot be sent to, the toolkit drops what he sent as well.
    use_.rest = GetRest();
    if (!use_.rest.empty()) OnReadyRead();
    if (error == QAbstractSocket::RemoteHostClosedError || use_.hasEnded) return;
    use_.hasEnded = use_.hasFailed = true;
    Fail(socket_->errorString());
    tasks_.Add([this] { TellError(); });
}

void QtTcpSocket::TellError() {
    EndReturnPath();
    const auto handler = events_.error;
    if (handler) handler(lastError_);
}

void QtTcpSocket::OnDisconnected() {
    if (std::exchange(use_.hasEnded, true)) return;
    tasks_.Add([this] { TellClosed(); }, TaskOrder::BehindThose);
}

void QtTcpSocket::TellClosed() {
    use_.wasEndTold = true;
    EndReturnPath();
    Tell(&SocketEvents::closed);
}

void QtTcpSocket::Tell(std::function<void()> SocketEvents::*event) {
    const auto handler = events_.*event;
    if (handler) handler();
}

bool QtTcpSocket::Fail(const QString& text) {
    lastError_ = FromQString(text);
    return false;
}

}  // namespace nordkeep
