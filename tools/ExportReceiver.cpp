#include "tools/Peers.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>

namespace nordkeep::tools {
namespace {

constexpr char kAck = 6;
constexpr char kLineTest = 7;
constexpr char kEnd = 3;

bool WaitFor(int descriptor, int timeoutMs) {
    pollfd input{descriptor, POLLIN, 0};
    return ::poll(&input, 1, timeoutMs) == 1;
}

/// Acknowledges telegrams and line tests until there have been so many.
bool Acknowledge(int line, const SendOptions& options) {
    bool isBehindEnd = false;
    for (long taken = 0; taken < options.count;) {
        char byte = 0;
        if (!WaitFor(line, options.timeoutMs) || ::recv(line, &byte, 1, 0) != 1) return false;
        if (!options.isQuiet) std::printf("<- %s\n", Readable(std::string(1, byte)).c_str());
        // Behind the end of a telegram stands its check, whatever byte that is.
        const bool isComplete = isBehindEnd || byte == kLineTest;
        isBehindEnd = !isBehindEnd && byte == kEnd;
        if (!isComplete) continue;
        if (::send(line, &kAck, 1, MSG_NOSIGNAL) != 1) return false;
        ++taken;
    }
    return true;
}

}  // namespace

int ReceiveExports(const SendOptions& options) {
    std::string port;
    if (!TakeTarget(options, "listen", port)) return Complain("the target is listen:PORT", kWrongUse);
    const int listener = ListenOn(port);
    if (listener < 0) return Complain("port " + port + " cannot be listened on", kRefused);
    const int line = WaitFor(listener, options.timeoutMs) ? ::accept(listener, nullptr, nullptr) : -1;
    const bool isWell = line >= 0 && Acknowledge(line, options);
    ::close(line);
    ::close(listener);
    if (!isWell) return Complain("nothing was exported", kNoAnswer);
    std::printf("acknowledged %ld\n", options.count);
    return 0;
}

}  // namespace nordkeep::tools
