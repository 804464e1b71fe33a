#include "tools/Peers.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstdlib>

namespace nordkeep::tools {
namespace {

struct PlayRow {
    const char* name;
    Play play;
};

constexpr PlayRow kPlays[] = {
    {"gsm", &ActAsModem},        {"confirmation", &DropFiles},
    {"file", &DropFiles},        {"virtualreceiver", &AnswerPolls},
    {"mail", &SendMails},        {"mailbox", &ActAsMailbox},
    {"export", &ReceiveExports},
};

}  // namespace

Play FindPlay(const std::string& format) {
    for (const PlayRow& row : kPlays) {
        if (format == row.name) return row.play;
    }
    return nullptr;
}

std::vector<std::string> PlayNames() {
    std::vector<std::string> names;
    for (const PlayRow& row : kPlays) names.emplace_back(row.name);
    return names;
}

bool TakeTarget(const SendOptions& options, const std::string& kind, std::string& rest) {
    const std::string& target = options.targets.front();
    const std::string prefix = kind + ":";
    if (target.rfind(prefix, 0) != 0) return false;
    rest = target.substr(prefix.size());
    return !rest.empty();
}

int ListenOn(const std::string& port) {
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(std::atoi(port.c_str())));
    const bool isWell = ::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
                        ::listen(listener, 8) == 0;
    return isWell ? listener : -1;
}

int Complain(const std::string& what, int status) {
    std::fprintf(stderr, "nordkeep-send: %s\n", what.c_str());
    return status;
}

}  // namespace nordkeep::tools
