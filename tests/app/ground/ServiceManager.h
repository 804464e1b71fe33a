#pragma once

#include "tests/doubles/TempFolder.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>

namespace nordkeep {

/// The datagram socket of a service manager, which the programs started meanwhile speak to.
class Manager {
 public:
    Manager() : descriptor_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        const std::string path = folder_.Path() + "/notify";
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        ::bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
        ::setenv("WATCHDOG_USEC", "300000", 1);
    }
    ~Manager() {
        ::unsetenv("NOTIFY_SOCKET");
        ::unsetenv("WATCHDOG_USEC");
        ::close(descriptor_);
    }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    /// Waits up to half a minute until the program has told this line; all that was told before is in
    /// `Heard`.
    bool Hears(const std::string& line) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (heard_.find(line) == std::string::npos) {
            if (std::chrono::steady_clock::now() > end) return false;
            pollfd waiting{descriptor_, POLLIN, 0};
            if (::poll(&waiting, 1, 30'000) <= 0) return false;
            char message[4096];
            const ssize_t got = ::recv(descriptor_, message, sizeof message, 0);
            heard_.append(message, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        }
        return true;
    }
    const std::string& Heard() const { return heard_; }
    void Forget() { heard_.clear(); }

 private:
    TempFolder folder_{};
    int descriptor_;
    std::string heard_{};
};

}  // namespace nordkeep
