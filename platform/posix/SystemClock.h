#pragma once

#include "platform/Clock.h"

namespace nordkeep {

/// The clocks of the machine, in the time zone that the process was started with. For one thread.
class SystemClock : public Clock {
 public:
    SystemClock();
    OleDate Now() const override;
    std::int64_t MonotonicMs() const override;
    std::int64_t MonotonicUs() const override;
    std::int64_t UtcMs() const override;
    OleDate LocalOf(std::int64_t utcMs) const override;

 private:
    // Every event asks for the time a dozen times; what the rules of the zone make of a second is kept.
    mutable std::int64_t second_ = -1;
    mutable OleDate beginOfSecond_{};
};

}  // namespace nordkeep
