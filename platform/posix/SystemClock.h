#pragma once

#include "platform/Clock.h"

namespace nordkeep {

/// The clocks of the machine, in the time zone that the process was started with.
class SystemClock : public Clock {
 public:
    SystemClock();
    OleDate Now() const override;
    std::int64_t MonotonicMs() const override;
    std::int64_t MonotonicUs() const override;
    std::int64_t UtcMs() const override;
    OleDate LocalOf(std::int64_t utcMs) const override;
};

}  // namespace nordkeep
