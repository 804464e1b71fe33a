#pragma once

#include "platform/Winsock.h"

#include <deque>
#include <utility>
#include <vector>

namespace nordkeep {

/// A socket slot without a network. The test plays the peer: it reads what was sent and makes things happen.
class FakeWinsock : public Winsock {
 public:
    explicit FakeWinsock(SocketKind kind) : kind_(kind) {}

    // What the test sees.
    Text sent{};                       // everything handed to SendData
    std::vector<Text> sends{};         // the same, one for each call
    std::vector<SocketPeer> sentTo{};  // of SendDataTo
    int closes = 0;
    bool areCallersHeld = false;
    int localPort = 0;
    int remotePort = 0;
    Text remoteHost{};
    Text boundAddress{};
    SocketTls tls{};

    // What the test sets.
    SocketState state = SocketState::Closed;
    Text remoteIp = "127.0.0.1";
    std::size_t unsentBytes = 0;
    Text failure{};  // not empty: Bind, Listen, Connect and SendData fail with this text

    // What the test makes happen.
    /// Bytes arrive; on UDP as one datagram.
    void Arrive(TextView bytes, const SocketPeer& from = {}) {
        arrived_.push_back({Text(bytes), from});
        Tell(events_.dataArrival);
    }
    /// Bytes arrive that the loop has not come to yet.
    void ArriveUntold(TextView bytes) { untold_ += bytes; }
    /// The connection that Connect has started stands.
    void Establish() {
        state = SocketState::Connected;
        Tell(events_.connected);
    }
    void CloseByPeer() {
        state = SocketState::Closing;
        Tell(events_.closed);
    }
    void Break(const Text& text) {
        state = SocketState::Error;
        failure_ = text;
        const auto handler = events_.error;
        if (handler) handler(text);
    }
    void CompleteSending() {
        unsentBytes = 0;
        Tell(events_.sendComplete);
    }
    /// Somebody calls this listening socket. The slot that accepts can be found by its state.
    void CallIn(SocketRequest request = 1) {
        const auto handler = events_.connectionRequest;
        if (handler) handler(request);
    }

    void SetEvents(SocketEvents events) override { events_ = std::move(events); }
    void SetTls(const SocketTls& given) override { tls = given; }
    void SetLocalPort(int port) override { localPort = port; }
    void SetRemotePort(int port) override { remotePort = port; }
    void SetRemoteHost(const Text& host) override { remoteHost = host; }
    int LocalPort() const override { return localPort; }
    Text RemoteHostIP() const override { return remoteIp; }
    void Close() override {
        ++closes;
        state = SocketState::Closed;
        arrived_.clear();
        untold_.clear();
    }
    bool Bind(int port, const Text& address) override {
        localPort = port;
        boundAddress = address;
        return Open(kind_ == SocketKind::Udp ? SocketState::Open : state);
    }
    void HoldCallers(bool isHeld) override { areCallersHeld = isHeld; }
    bool Listen() override { return Open(SocketState::Listening); }
    bool Connect() override {
        return Open(kind_ == SocketKind::Udp ? SocketState::Open : SocketState::Connecting);
    }
    void Accept(SocketRequest) override { state = SocketState::Connected; }
    SocketState State() const override { return state; }
    bool SendData(TextView bytes) override {
        if (state != SocketState::Connected && state != SocketState::Open) return false;
        if (!failure.empty()) return false;
        sent.append(bytes);
        sends.emplace_back(bytes);
        return true;
    }
    bool SendDataTo(const SocketPeer& peer, TextView bytes) override {
        sentTo.push_back(peer);
        return SendData(bytes);
    }
    SocketPeer Sender() const override { return sender_; }
    void Flush() override {}
    Text GetData() override {
        Text data;
        while (!arrived_.empty()) {
            data += arrived_.front().bytes;
            sender_ = arrived_.front().from;
            arrived_.pop_front();
            if (kind_ == SocketKind::Udp) break;
        }
        return data;
    }
    Text GetRest() override {
        Text rest = GetData();
        return rest += std::exchange(untold_, {});
    }
    std::size_t UnsentBytes() const override { return unsentBytes; }
    Text LastError() const override { return failure.empty() ? failure_ : failure; }

 private:
    bool Open(SocketState opened) {
        if (!failure.empty()) return false;
        state = opened;
        return true;
    }
    static void Tell(const std::function<void()>& event) {
        const std::function<void()> handler = event;  // the handler may set other events
        if (handler) handler();
    }

    SocketKind kind_;
    SocketEvents events_{};
    struct Arrived {
        Text bytes{};
        SocketPeer from{};
    };
    std::deque<Arrived> arrived_{};
    SocketPeer sender_{};
    Text untold_{};
    Text failure_{};
};

/// Hands out fake sockets and knows them in the order of their making; they belong to who asked for them.
class FakeSockets : public SocketFactory {
 public:
    std::unique_ptr<Winsock> NewSocket(SocketKind kind) override {
        auto socket = std::make_unique<FakeWinsock>(kind);
        if (!failure.empty()) socket->failure = failure;
        made.push_back(socket.get());
        return socket;
    }
    FakeWinsock& At(std::size_t number) { return *made.at(number); }
    FakeWinsock& Last() { return *made.back(); }

    std::vector<FakeWinsock*> made{};
    Text failure{};  // of the sockets made from now on
};

}  // namespace nordkeep
