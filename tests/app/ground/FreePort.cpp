#include "tests/app/ground/FreePort.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace nordkeep {
namespace {

struct Range {
    int low;
    int high;
};

/// Above the ports of the demonstration centre, and below what the system hands out.
Range PortsForTests() {
    constexpr Range kUsual = {18'000, 32'000};
    constexpr int kFewest = 1000;
    std::ifstream file("/proc/sys/net/ipv4/ip_local_port_range");
    int lowest = kUsual.high;
    int highest = 0;
    file >> lowest >> highest;
    if (lowest >= kUsual.low + kFewest) return {kUsual.low, std::min(kUsual.high, lowest - 1)};
    if (highest + kFewest < 65'535) return {highest + 1, 65'535};
    return kUsual;
}

/// A name in the system's own table, which goes with the last of its holders; nobody inherits it. It counts
/// in the same network as the ports do.
bool Hold(int port) {
    const int lock = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const std::string name = "nordkeep-test-port-" + std::to_string(port);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.copy(address.sun_path + 1, sizeof address.sun_path - 1);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    if (::bind(lock, reinterpret_cast<const sockaddr*>(&address), size) == 0) return true;
    ::close(lock);
    return false;
}

bool IsUnused(int port, int type) {
    const int probe = ::socket(AF_INET, type | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    const bool isUnused = ::bind(probe, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(probe);
    return isUnused;
}

}  // namespace

int FreePort() {
    static const Range range = PortsForTests();
    static int next = range.low + ::getpid() * 37 % (range.high - range.low);
    for (int tried = 0; tried < range.high - range.low; ++tried) {
        const int port = next;
        next = next + 1 < range.high ? next + 1 : range.low;
        if (Hold(port) && IsUnused(port, SOCK_STREAM) && IsUnused(port, SOCK_DGRAM)) return port;
    }
    std::fprintf(stderr, "there is no free port\n");
    std::abort();
}

}  // namespace nordkeep
