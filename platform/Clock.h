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
    /// The local wall time of such a moment. By the present distance of the two unless a clock knows better.
    virtual OleDate LocalOf(std::int64_t utcMs) const { return Now().PlusMilliseconds(utcMs - UtcMs()); }
    /// The moment of a local wall time; of an hour that comes twice, one of the two.
    std::int64_t UtcOf(OleDate local) const {
        const std::int64_t guess = UtcMs() + local.Milliseconds() - Now().Milliseconds();
        return guess + local.Milliseconds() - LocalOf(guess).Milliseconds();
    }
};

}  // namespace nordkeep
