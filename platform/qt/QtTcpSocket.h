#pragma once

#include "platform/Winsock.h"
#include "platform/qt/TaskQueue.h"
#include "platform/qt/WaitingCallers.h"

#include <QtNetwork/QHostAddress>
#include <QtNetwork/QSslSocket>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

namespace nordkeep {

/// A TCP slot. Each connection has a toolkit socket of its own, which the slot lets go on Close: it can then
/// still send what is left, while the slot is free for the next connection.
class QtTcpSocket : public Winsock {
 public:
    explicit QtTcpSocket(std::shared_ptr<WaitingCallers> callers);
    ~QtTcpSocket() override { QtTcpSocket::Close(); }
    QtTcpSocket(const QtTcpSocket&) = delete;
    QtTcpSocket& operator=(const QtTcpSocket&) = delete;

    void SetEvents(SocketEvents events) override { events_ = std::move(events); }
    void SetTls(const SocketTls& tls) override { tls_ = tls; }
    void SetLocalPort(int port) override { localPort_ = port; }
    void SetRemotePort(int port) override { remotePort_ = port; }
    void SetRemoteHost(const Text& host) override { remoteHost_ = host; }
    int LocalPort() const override;
    Text RemoteHostIP() const override { return remoteIp_; }

    void Close() override;
    bool Bind(int port, const Text& address) override;
    bool Listen() override;
    void HoldCallers(bool isHeld) override;
    bool Connect() override;
    void Accept(SocketRequest request) override;
    SocketState State() const override;
    bool SendData(TextView bytes) override;
    void Flush() override;
    Text GetData() override;
    Text GetRest() override;
    std::size_t UnsentBytes() const override;
    Text LastError() const override { return lastError_; }

 private:
    /// Listens; hands over each caller as the bare descriptor, so that any slot can take it.
    class Listener : public QTcpServer {
     public:
        explicit Listener(QtTcpSocket& slot) : slot_(slot) {}

     private:
        void incomingConnection(qintptr descriptor) override;
        QtTcpSocket& slot_;
    };

    /// What holds for one connection only.
    struct Use {
        bool hasEnded = false;
        bool hasFailed = false;
        bool wasEndTold = false;
        bool isArrivalWaiting = false;
        bool isSending = false;
        bool isCompletionWaiting = false;
        Text rest{};  // had arrived when the connection failed
    };

    void WatchToolkitSocket();
    bool NewSocket();
    bool NewCallingSocket();
    bool IsEncrypted() const;
    void LetGo(QTcpSocket* socket);
    void ResumeAccepting();
    void BeginTalk(int descriptor);
    void OnConnected();
    void OnReadyRead();
    void OnBytesWritten();
    void OnError(QAbstractSocket::SocketError error);
    void OnDisconnected();
    void TellArrival();
    void TellCompletion();
    void TellError();
    void TellClosed();
    bool SendBack(TextView bytes);
    void EndReturnPath();
    void Tell(std::function<void()> SocketEvents::*event);
    bool Fail(const QString& text);

    SocketEvents events_{};
    std::shared_ptr<WaitingCallers> callers_;
    int localPort_ = 0;
    int remotePort_ = 0;
    Text remoteHost_{};
    Text remoteIp_{};
    Text lastError_{};
    SocketTls tls_{};
    QHostAddress localAddress_{QHostAddress::AnyIPv4};
    TaskQueue tasks_{};  // owns the toolkit's sockets, and receives what they tell
    QTcpSocket* socket_ = nullptr;
    QSslSocket* secured_ = nullptr;  // the same socket while its connection is to be encrypted
    Listener listener_{*this};
    Use use_{};
    /// A second descriptor of the connection. The toolkit gives its own up when the peer closes, but a sender
    /// that closes its half right behind a telegram still wants the reply.
    int returnPath_ = -1;
};

}  // namespace nordkeep
