#pragma once

#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// Notices when the event loop stands still: a timer of its own that comes late tells how long nothing else
/// was served either, and the marks tell what took the time. A handler that waits in a nested loop stalls
/// nothing, and is not told.
class StallWatch {
 public:
    StallWatch(const Clock& clock, EventLoop& loop, SysLog& log, const Language& language);

    void Start();
    void Stop() { timer_->Stop(); }
    /// How long the loop stood still at most since the start; what is too short to be told counts, too.
    std::int64_t LongestStallMs() const { return longestStallMs_; }

    /// What the loop is doing, from here to the end of the scope. The name must live as long.
    class Mark {
     public:
        Mark(StallWatch& watch, TextView name);
        ~Mark();
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;

     private:
        friend class StallWatch;

        StallWatch& watch_;
        TextView name_;
        std::int64_t beganAtMs_;
        const Mark* outer_;
    };

 private:
    void Beat();
    void Tell(std::int64_t stallMs) const;

    const Clock& clock_;
    SysLog& log_;
    const Language& language_;
    std::unique_ptr<Timer> timer_;
    std::int64_t lastBeatMs_ = 0;
    const Mark* innermost_ = nullptr;
    std::int64_t longestStallMs_ = 0;
    std::int64_t longestMs_ = 0;  // of the marks that have ended since the last beat
    Text longest_{};
};

}  // namespace nordkeep
