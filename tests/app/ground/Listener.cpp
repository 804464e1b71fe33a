#include "tests/app/ground/Listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace nordkeep {
namespace {

constexpr int kPatienceMs = 30'000;

bool WaitUntilReadable(int descriptor) {
    pollfd waiting{descriptor, POLLIN, 0};
    return ::poll(&waiting, 1, kPatienceMs) > 0;
}

}  // namespace

Text Visitor::ReceiveLine() const {
    Text line;
    char byte = 0;
    while (byte != '\n' && WaitUntilReadable(descriptor_) && ::read(descriptor_, &byte, 1) == 1) line += byte;
    return line;
}

void Visitor::Close() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
}

Listener::Listener(int port) : descriptor_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    const int on = 1;
    ::setsockopt(descriptor_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    socklen_t size = sizeof address;
    ::bind(descriptor_, reinterpret_cast<sockaddr*>(&address), size);
    ::listen(descriptor_, 8);
    ::getsockname(descriptor_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
}

Listener::~Listener() {
    ::close(descriptor_);
}

Visitor Listener::Accept() const {
    return Visitor(WaitUntilReadable(descriptor_) ? ::accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC)
                                                  : -1);
}

}  // namespace nordkeep
