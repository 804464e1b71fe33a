#pragma once

#include "runtime/Language.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// Tells in the log that the peer of an outgoing line is not reached, once for each outage, and that it is
/// again.
class OutageLog {
 public:
    OutageLog(SysLog& log, const Language& language) : log_(log), language_(language) {}

    /// `line` names the line and its peer, `why` is the system's word for what happened.
    void NoteFailure(const Text& line, const Text& why);
    void NoteReached(const Text& line);
    bool IsOut() const { return isOut_; }

 private:
    SysLog& log_;
    const Language& language_;
    bool isOut_ = false;
};

}  // namespace nordkeep
