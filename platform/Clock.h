#pragma once

#include "platform/OleDate.h"

#include <cstdint>

namespace nordkeep {

/// The two clocks of the logic. It is handed in; nothing in the logic asks the system for the time.
class Clock {
 public:
    virtual ~Clock() = default;
    /// Local wall time with milliseconds.
    virtual OleDate Now() const = 0;
    /// Milliseconds of a clock that nobody sets; for everything that measures how long something took.
    virtual std::int64_t MonotonicMs() const = 0;
    /// Microseconds of the same clock, for what takes less than a millisecond.
    virtual std::int64_t MonotonicUs() const { return MonotonicMs() * 1000; }
    /// Milliseconds since 1970 in UTC, as the wall clock has it.
    virtual std::int64_t UtcMs() const = 0;
};

}  // namespace nordkeep
