#pragma once

#include "platform/Clock.h"
#include "runtime/SysLog.h"

#include <map>

namespace nordkeep {

/// The system log for lines that a peer can cause at will: of each address at most kMostLines a minute are
/// written, the rest is counted and told with the next line.
class PeerLog {
 public:
    static constexpr int kMostLines = 60;

    PeerLog(SysLog& log, const Clock& clock) : log_(log), clock_(clock) {}

    /// Control characters of `text` are written as "?".
    void Write(const Text& address, TextView text, LogKind kind);

 private:
    struct Peer {
        std::int64_t minuteStartMs = 0;
        int lines = 0;
        int left = 0;  // not written since the last line
    };

    Peer& PeerOf(const Text& address);

    SysLog& log_;
    const Clock& clock_;
    std::map<Text, Peer> peers_{};
};

}  // namespace nordkeep
