#pragma once

#include "platform/Text.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <utility>

namespace nordkeep {

/// The other end of a connection on the loopback interface, by the system's own calls; it never waits.
class Peer {
 public:
    /// Calls a listening socket.
    static Peer Call(int port) {
        Peer peer(::socket(AF_INET, SOCK_STREAM, 0));
        const sockaddr_in address = Address(port);
        if (::connect(peer.descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw std::runtime_error("cannot call");
        }
        return peer;
    }
    /// The same by the longer kind of address.
    static Peer CallByIPv6(int port, int type = SOCK_STREAM) {
        Peer peer(::socket(AF_INET6, type, 0));
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_port = htons(static_cast<std::uint16_t>(port));
        address.sin6_addr = in6addr_loopback;
        if (::connect(peer.descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
            throw std::runtime_error("cannot call");
        }
        return peer;
    }
    /// A socket bound to a free port: TCP ones listen.
    static Peer At(int type, int port = 0) {
        Peer peer(::socket(AF_INET, type, 0));
        const sockaddr_in address = Address(port);
        ::bind(peer.descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        if (type == SOCK_STREAM) ::listen(peer.descriptor_, 5);
        return peer;
    }

    explicit Peer(int descriptor) : descriptor_(descriptor) {}
    Peer(Peer&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    ~Peer() { HangUp(); }

    int Port() const {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }
    /// The caller of a listening peer; its descriptor is -1 while there is none.
    Peer Answer() { return Peer(::accept4(descriptor_, nullptr, nullptr, SOCK_NONBLOCK)); }
    bool IsThere() const { return descriptor_ >= 0; }

    void Send(TextView bytes) { ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }
    /// The number of bytes that the system takes at once.
    std::size_t TrySend(TextView bytes) {
        const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        return sent < 0 ? 0 : static_cast<std::size_t>(sent);
    }
    void SendTo(int port, TextView bytes) {
        const sockaddr_in to = Address(port);
        ::sendto(descriptor_, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&to),
                 sizeof to);
    }
    void FinishSending() { ::shutdown(descriptor_, SHUT_WR); }
    void HangUp() {
        if (descriptor_ >= 0) ::close(std::exchange(descriptor_, -1));
    }
    void Reset() {
        const linger atOnce{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        HangUp();
    }

    /// Everything received so far.
    const Text& Received() {
        char buffer[65536];
        ssize_t count = 0;
        while ((count = ::recv(descriptor_, buffer, sizeof buffer, MSG_DONTWAIT)) > 0) {
            received_.append(buffer, static_cast<std::size_t>(count));
        }
        if (count == 0) isClosed_ = true;
        if (count < 0 && errno == ECONNRESET) isReset_ = isClosed_ = true;
        return received_;
    }
    /// True when the other end has closed, and all it sent has been received.
    bool SeesClose() { return Received(), isClosed_; }
    bool SeesReset() { return Received(), isReset_; }

 private:
    static sockaddr_in Address(int port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }

    int descriptor_;
    Text received_{};
    bool isClosed_ = false;
    bool isReset_ = false;
};

}  // namespace nordkeep
