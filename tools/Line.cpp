#include "tools/Line.h"

#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace nordkeep::tools {
namespace {

speed_t SpeedOf(int baud) {
    switch (baud) {
        case 300:
            return B300;
        case 1200:
            return B1200;
        case 2400:
            return B2400;
        case 4800:
            return B4800;
        case 19200:
            return B19200;
        case 38400:
            return B38400;
        case 57600:
            return B57600;
        case 115200:
            return B115200;
        default:
            return B9600;
    }
}

void SetNoDelay(int descriptor) {
    const int on = 1;
    setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

}  // namespace

Line::~Line() {
    if (descriptor_ >= 0) close(descriptor_);
}

bool Line::Fail(const std::string& what) {
    error_ = what + ": " + std::strerror(errno);
    return false;
}

bool Line::Reopen() {
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
    isLost_ = false;
    return Open(std::string(target_));
}

bool Line::Open(const std::string& target) {
    target_ = target;
    const std::size_t colon = target.find(':');
    const std::string kind = target.substr(0, colon);
    const std::string rest = colon == std::string::npos ? "" : target.substr(colon + 1);
    const std::size_t last = rest.rfind(':');
    if ((kind == "tcp" || kind == "udp") && last != std::string::npos) {
        return OpenSocket(rest.substr(0, last), rest.substr(last + 1),
                          kind == "tcp" ? SOCK_STREAM : SOCK_DGRAM);
    }
    if (kind == "serial" && !rest.empty()) {
        const std::size_t comma = rest.find(',');
        const int baud = comma == std::string::npos ? 9600 : std::atoi(rest.c_str() + comma + 1);
        return OpenSerial(rest.substr(0, comma), baud);
    }
    if (kind == "listen" && !rest.empty()) return WaitForCall(rest);
    isTargetUnderstood_ = false;
    error_ = "unknown target \"" + target + "\"";
    return false;
}

bool Line::OpenSocket(const std::string& host, const std::string& port, int type) {
    addrinfo hints{};
    hints.ai_socktype = type;
    hints.ai_family = AF_INET;
    addrinfo* found = nullptr;
    if (const int code = getaddrinfo(host.c_str(), port.c_str(), &hints, &found); code != 0) {
        error_ = host + ": " + gai_strerror(code);
        return false;
    }
    descriptor_ = socket(found->ai_family, type | SOCK_CLOEXEC, 0);
    const bool isConnected = connect(descriptor_, found->ai_addr, found->ai_addrlen) == 0;
    freeaddrinfo(found);
    if (!isConnected) return Fail(host + ":" + port);
    if (type == SOCK_STREAM) SetNoDelay(descriptor_);
    return true;
}

bool Line::OpenSerial(const std::string& device, int baud) {
    descriptor_ = open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (descriptor_ < 0) return Fail(device);
    termios mode{};
    if (tcgetattr(descriptor_, &mode) != 0) return Fail(device);
    cfmakeraw(&mode);
    mode.c_cflag |= CLOCAL | CREAD;
    cfsetspeed(&mode, SpeedOf(baud));
    return tcsetattr(descriptor_, TCSANOW, &mode) == 0 || Fail(device);
}

bool Line::WaitForCall(const std::string& port) {
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(std::atoi(port.c_str())));
    const bool isListening = bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                             listen(listener, 1) == 0;
    if (isListening) descriptor_ = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    const bool isCalled = descriptor_ >= 0 || Fail("port " + port);
    close(listener);
    if (isCalled) SetNoDelay(descriptor_);
    return isCalled;
}

bool Line::Send(const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = write(descriptor_, bytes.data() + sent, bytes.size() - sent);
        if (count < 0 && errno != EINTR) return Fail("send");
        if (count > 0) sent += static_cast<std::size_t>(count);
    }
    return true;
}

std::string Line::Receive() {
    pollfd waiting{descriptor_, POLLIN, 0};
    if (poll(&waiting, 1, 0) <= 0) return {};
    char buffer[4096];
    const ssize_t count = read(descriptor_, buffer, sizeof buffer);
    if (count <= 0) {
        isLost_ = true;
        return {};
    }
    return {buffer, static_cast<std::size_t>(count)};
}

}  // namespace nordkeep::tools
