#include "platform/MachineFacts.h"

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace nordkeep {

std::vector<Text> InterfaceAddresses() {
    std::vector<Text> addresses;
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0) return addresses;
    for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
        if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET) continue;
        std::array<char, INET_ADDRSTRLEN> text{};
        const auto* address = reinterpret_cast<const sockaddr_in*>(each->ifa_addr);
        if (::inet_ntop(AF_INET, &address->sin_addr, text.data(), text.size()))
            addresses.emplace_back(text.data());
    }
    ::freeifaddrs(first);
    return addresses;
}

FileRights RightsOf(const NativePath& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return {};
    return {.isThere = true,
            .isFolder = S_ISDIR(facts.st_mode),
            .mayWrite = ::access(path.c_str(), W_OK) == 0,
            .mayOthersRead = (facts.st_mode & S_IROTH) != 0};
}

}  // namespace nordkeep
