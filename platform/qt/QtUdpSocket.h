#pragma once

#include "platform/Winsock.h"
#include "platform/qt/TaskQueue.h"

#include <QtCore/QList>
#include <QtNetwork/QHostAddress>
#include <QtNetwork/QUdpSocket>

namespace nordkeep {

/// A UDP slot. Its socket takes datagrams from any sender and answers the last one.
class QtUdpSocket : public Winsock {
 public:
    void SetEvents(SocketEvents events) override { events_ = std::move(events); }
    void SetTls(const SocketTls&) override {}
    void SetLocalPort(int port) override { localPort_ = port; }
    void SetRemotePort(int port) override { remotePort_ = port; }
    void SetRemoteHost(const Text& host) override { remoteHost_ = host; }
    int LocalPort() const override { return socket_ == nullptr ? localPort_ : socket_->localPort(); }
    Text RemoteHostIP() const override { return remoteIp_; }

    void Close() override;
    bool Bind(int port, const Text& address) override;
    bool Listen() override;
    bool Connect() override;
    void Accept(SocketRequest) override {}
    SocketState State() const override {
        return socket_ == nullptr ? SocketState::Closed : SocketState::Open;
    }
    bool SendData(TextView bytes) override;
    bool SendDataTo(const SocketPeer& peer, TextView bytes) override;
    void Flush() override {}
    Text GetData() override;
    SocketPeer Sender() const override { return sender_; }
    std::size_t UnsentBytes() const override { return 0; }
    Text LastError() const override { return lastError_; }

 private:
    bool SendDatagram(TextView bytes, const QHostAddress& address, quint16 port);
    void LookUpRemote();
    void TakeRemote(const QList<QHostAddress>& addresses);
    void OnReadyRead();
    void TellArrivals();
    bool Fail(const QString& text);

    SocketEvents events_{};
    int localPort_ = 0;
    int remotePort_ = 0;
    Text remoteHost_{};
    Text remoteIp_{};
    SocketPeer sender_{};
    Text lastError_{};
    QHostAddress destination_{};
    quint16 destinationPort_ = 0;
    TaskQueue tasks_{};  // owns the toolkit's sockets, and receives what they tell
    QUdpSocket* socket_ = nullptr;
    int lookUp_ = -1;  // of the remote's name, as long as it runs
    bool isArrivalWaiting_ = false;
    bool wasTaken_ = false;  // the datagram that is being told
};

}  // namespace nordkeep
