#include "platform/qt/QtUdpSocket.h"

#include "platform/qt/Addresses.h"
#include "platform/qt/QtText.h"

#include <QtCore/QVariant>
#include <QtNetwork/QHostInfo>
#include <QtNetwork/QNetworkDatagram>

#include <utility>

namespace nordkeep {
namespace {

/// Datagrams of one turn of the loop: enough to share one synchronisation, and the other sockets get theirs.
constexpr int kMostPerTurn = 64;
/// The system drops what does not fit while the program is busy; it may give less.
constexpr int kReceiveBufferSize = 1 << 20;

}  // namespace

void QtUdpSocket::Close() {
    tasks_.Clear();
    QHostInfo::abortHostLookup(lookUp_);
    isArrivalWaiting_ = false;
    destination_.clear();
    QUdpSocket* old = std::exchange(socket_, nullptr);
    if (old == nullptr) return;
    QObject::disconnect(old, nullptr, &tasks_, nullptr);
    old->close();
    old->deleteLater();
}

bool QtUdpSocket::Bind(int port, const Text& address) {
    Close();
    const QHostAddress local = LocalAddress(address);
    if (local.isNull()) return Fail(QStringLiteral("The address is no IP address"));
    if (port < 0 || port > 65535) return Fail(QStringLiteral("The port number is out of range"));
    socket_ = new QUdpSocket(&tasks_);
    // Not shared: a second program that reuses the address would take the datagrams away unseen.
    if (!socket_->bind(local, static_cast<quint16>(port), QAbstractSocket::DontShareAddress)) {
        const QString text = socket_->errorString();
        Close();
        return Fail(text);
    }
    localPort_ = port;
    socket_->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, kReceiveBufferSize);
    QObject::connect(socket_, &QUdpSocket::readyRead, &tasks_, [this] { OnReadyRead(); });
    return true;
}

bool QtUdpSocket::Listen() {
    return Fail(QStringLiteral("A UDP socket does not listen"));
}

bool QtUdpSocket::Connect() {
    if (socket_ == nullptr && !Bind(localPort_, {})) return false;
    LookUpRemote();
    return true;
}

void QtUdpSocket::LookUpRemote() {
    if (remoteHost_.empty() || remotePort_ <= 0 || remotePort_ > 65535) return;
    const QString name = ToQString(remoteHost_);
    const QHostAddress address(name);
    if (!address.isNull()) return TakeRemote({address});
    // The toolkit looks up on a thread of its own.
    lookUp_ = QHostInfo::lookupHost(name, &tasks_,
                                    [this](const QHostInfo& found) { TakeRemote(found.addresses()); });
}

void QtUdpSocket::TakeRemote(const QList<QHostAddress>& addresses) {
    for (const QHostAddress& address : addresses) {
        // Whoever has sent something by now is answered first.
        if (!destination_.isNull()) return;
        if (address.protocol() == QAbstractSocket::IPv4Protocol) destination_ = address;
        destinationPort_ = static_cast<quint16>(remotePort_);
    }
}

bool QtUdpSocket::SendData(TextView bytes) {
    return SendDatagram(bytes, destination_, destinationPort_);
}

bool QtUdpSocket::SendDataTo(const SocketPeer& peer, TextView bytes) {
    return SendDatagram(bytes, QHostAddress(ToQString(peer.address)), static_cast<quint16>(peer.port));
}

bool QtUdpSocket::SendDatagram(TextView bytes, const QHostAddress& address, quint16 port) {
    if (socket_ == nullptr) return Fail(QStringLiteral("The socket is not open"));
    if (address.isNull()) return Fail(QStringLiteral("There is nobody to send to yet"));
    const auto size = static_cast<qint64>(bytes.size());
    if (socket_->writeDatagram(bytes.data(), size, address, port) != size) {
        return Fail(socket_->errorString());
    }
    tasks_.Add([this] {
        const auto handler = events_.sendComplete;
        if (handler) handler();
    });
    return true;
}

Text QtUdpSocket::GetData() {
    wasTaken_ = true;
    if (socket_ == nullptr || !socket_->hasPendingDatagrams()) return {};
    const QNetworkDatagram datagram = socket_->receiveDatagram();
    if (!datagram.isValid()) return {};
    destination_ = datagram.senderAddress();
    destinationPort_ = static_cast<quint16>(datagram.senderPort());
    remoteIp_ = AddressText(destination_);
    sender_ = {FromQString(destination_.toString()), destinationPort_};
    return datagram.data().toStdString();
}

void QtUdpSocket::OnReadyRead() {
    if (!std::exchange(isArrivalWaiting_, true)) tasks_.Add([this] { TellArrivals(); });
}

void QtUdpSocket::TellArrivals() {
    // From here on the next arrival is told anew, also while a handler of these waits.
    isArrivalWaiting_ = false;
    const QUdpSocket* told = socket_;
    for (int turn = 0; turn < kMostPerTurn && socket_->hasPendingDatagrams(); ++turn) {
        wasTaken_ = false;
        const auto handler = events_.dataArrival;
        if (handler) handler();
        if (socket_ != told) return;
        // The toolkit tells nothing more until the datagram has been taken.
        if (!wasTaken_) GetData();
    }
    if (socket_->hasPendingDatagrams()) OnReadyRead();
}

bool QtUdpSocket::Fail(const QString& text) {
    lastError_ = FromQString(text);
    return false;
}

}  // namespace nordkeep
