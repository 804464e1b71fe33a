#pragma once

#include "platform/Clock.h"
#include "platform/EventLoop.h"

namespace nordkeep {

/// The one wait of all ports that talk with a modem. While one of them waits, the loop goes on with
/// everything else. A second port can begin a wait inside the first one's; there is one counter for all, so
/// the first wait may then end early.
class CommWait {
 public:
    CommWait(EventLoop& loop, const Clock& clock) : loop_(loop), clock_(clock) {}

    void Begin(std::int64_t ms) { endsAtMs_ = clock_.MonotonicMs() + ms; }
    bool IsOver() const { return hasEnded_ || clock_.MonotonicMs() >= endsAtMs_; }
    /// Handles events for a moment.
    void Pump() { loop_.SleepAndPump(kMomentMs); }
    /// The program ends: no wait lasts from here on.
    void EndAll() { hasEnded_ = true; }
    bool HasEnded() const { return hasEnded_; }

 private:
    static constexpr int kMomentMs = 10;

    EventLoop& loop_;
    const Clock& clock_;
    std::int64_t endsAtMs_ = 0;
    bool hasEnded_ = false;
};

}  // namespace nordkeep
