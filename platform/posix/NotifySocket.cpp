#include "platform/posix/NotifySocket.h"

#include <stddef.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace nordkeep {
namespace {

constexpr int kLongestWatchdogMs = 24 * 3600 * 1000;

std::string TakeVariable(const char* name) {
    const char* value = std::getenv(name);
    std::string taken = value == nullptr ? "" : value;
    ::unsetenv(name);
    return taken;
}

/// The interval of the watchdog, when it watches this very process.
int WatchdogMsOf(const std::string& microseconds, const std::string& process) {
    if (!process.empty() && process != std::to_string(::getpid())) return 0;
    const long long number = std::strtoll(microseconds.c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long long>(number / 1000, 0, kLongestWatchdogMs));
}

}  // namespace

NotifySocket::NotifySocket() : address_(TakeVariable("NOTIFY_SOCKET")) {
    const std::string microseconds = TakeVariable("WATCHDOG_USEC");
    const std::string process = TakeVariable("WATCHDOG_PID");
    const bool isName = !address_.empty() && (address_[0] == '/' || address_[0] == '@');
    if (!isName || address_.size() >= sizeof(sockaddr_un::sun_path)) return;
    if (address_[0] == '@') address_[0] = '\0';
    socket_ = Descriptor(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    watchdogMs_ = WatchdogMsOf(microseconds, process);
}

bool NotifySocket::Tell(const std::string& state) {
    if (!socket_) return true;
    sockaddr_un manager{};
    manager.sun_family = AF_UNIX;
    std::memcpy(manager.sun_path, address_.data(), address_.size());
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + address_.size());
    const ssize_t sent = ::sendto(socket_.Get(), state.data(), state.size(), MSG_NOSIGNAL,
                                  reinterpret_cast<const sockaddr*>(&manager), size);
    return sent == static_cast<ssize_t>(state.size());
}

}  // namespace nordkeep
