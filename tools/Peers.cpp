#include "tools/Peers.h"

#include <cstdio>

namespace nordkeep::tools {
namespace {

struct PlayRow {
    const char* name;
    Play play;
};

constexpr PlayRow kPlays[] = {
    {"gsm", &ActAsModem}, {"confirmation", &DropFiles},
    {"file", &DropFiles}, {"virtualreceiver", &AnswerPolls},
    {"mail", &SendMails},
};

}  // namespace

Play FindPlay(const std::string& format) {
    for (const PlayRow& row : kPlays) {
        if (format == row.name) return row.play;
    }
    return nullptr;
}

bool TakeTarget(const SendOptions& options, const std::string& kind, std::string& rest) {
    const std::string& target = options.targets.front();
    const std::string prefix = kind + ":";
    if (target.rfind(prefix, 0) != 0) return false;
    rest = target.substr(prefix.size());
    return !rest.empty();
}

int Complain(const std::string& what) {
    std::fprintf(stderr, "nordkeep-send: %s\n", what.c_str());
    return 2;
}

}  // namespace nordkeep::tools
