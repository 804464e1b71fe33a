#pragma once

#include "platform/EventLoop.h"
#include "platform/Winsock.h"

#include <map>
#include <utility>
#include <vector>

namespace nordkeep {

/// TCP sockets that reach each other inside the process, without a network: what one sends arrives at the
/// other on a later turn of the loop.
class LoopbackLink : public SocketFactory {
 public:
    explicit LoopbackLink(EventLoop& loop) : loop_(loop) {}

    class Socket;
    std::unique_ptr<Winsock> NewSocket(SocketKind kind) override;

    bool isRefusing = false;  // no connection comes about

 private:
    EventLoop& loop_;
    std::map<int, Socket*> listeners_{};
};

class LoopbackLink::Socket : public Winsock {
 public:
    explicit Socket(LoopbackLink& link) : link_(link) {}
    ~Socket() override {
        Close();
        *life_ = false;
    }

    void SetEvents(SocketEvents events) override { events_ = std::move(events); }
    void SetTls(const SocketTls&) override {}
    void SetLocalPort(int port) override { localPort_ = port; }
    void SetRemotePort(int port) override { remotePort_ = port; }
    void SetRemoteHost(const Text&) override {}
    int LocalPort() const override { return localPort_; }
    Text RemoteHostIP() const override { return "127.0.0.1"; }
    void Close() override {
        if (state_ == SocketState::Listening) link_.listeners_.erase(localPort_);
        state_ = SocketState::Closed;
        arrived_.clear();
        ++use_;
        if (Socket* peer = std::exchange(peer_, nullptr)) {
            peer->peer_ = nullptr;
            peer->Later([peer] { Tell(peer->events_.closed); });
        }
    }
    bool Bind(int, const Text&) override { return true; }
    bool Listen() override {
        link_.listeners_[localPort_] = this;
        state_ = SocketState::Listening;
        return true;
    }
    bool Connect() override {
        Close();
        state_ = SocketState::Connecting;
        Later([this] { Call(); });
        return true;
    }
    void Accept(SocketRequest request) override {
        auto* caller = reinterpret_cast<Socket*>(request);
        Close();
        state_ = caller->state_ = SocketState::Connected;
        peer_ = caller;
        caller->peer_ = this;
    }
    SocketState State() const override { return state_; }
    bool SendData(TextView bytes) override {
        if (state_ != SocketState::Connected) return false;
        if (Socket* peer = peer_) {
            peer->arrived_.append(bytes);
            peer->Later([peer] { Tell(peer->events_.dataArrival); });
        }
        Later([this] { Tell(events_.sendComplete); });
        return true;
    }
    void Flush() override {}
    Text GetData() override { return std::exchange(arrived_, {}); }
    std::size_t UnsentBytes() const override { return 0; }
    Text LastError() const override { return {}; }

 private:
    static void Tell(const std::function<void()>& event) {
        const std::function<void()> handler = event;
        if (handler) handler();
    }
    /// Runs a task if this socket still serves the same connection then.
    void Later(std::function<void()> task) {
        link_.loop_.Post([this, life = life_, use = use_, task = std::move(task)] {
            if (*life && use == use_) task();
        });
    }
    void Call() {
        const auto found = link_.listeners_.find(remotePort_);
        if (found != link_.listeners_.end() && !link_.isRefusing) {
            const auto handler = found->second->events_.connectionRequest;
            if (handler) handler(reinterpret_cast<SocketRequest>(this));
        }
        if (state_ == SocketState::Connected) return Tell(events_.connected);
        state_ = SocketState::Error;
        const auto handler = events_.error;
        if (handler) handler("Connection refused");
    }

    LoopbackLink& link_;
    SocketEvents events_{};
    SocketState state_ = SocketState::Closed;
    int localPort_ = 0;
    int remotePort_ = 0;
    Socket* peer_ = nullptr;
    Text arrived_{};
    int use_ = 0;
    std::shared_ptr<bool> life_ = std::make_shared<bool>(true);
};

inline std::unique_ptr<Winsock> LoopbackLink::NewSocket(SocketKind) {
    return std::make_unique<Socket>(*this);
}

}  // namespace nordkeep
