#pragma once

#include <cstdint>
#include <deque>

namespace nordkeep {

/// Whether alarms come faster than a person can open them one by one. Begins with more than ten within a
/// minute and ends below five.
class AlarmRate {
 public:
    /// A new alarm, at a time that only goes forward, ms.
    void Note(std::int64_t nowMs);
    bool IsFlood(std::int64_t nowMs) const;

 private:
    void Forget(std::int64_t nowMs) const;

    // Of the last minute, brought up to date whenever somebody asks.
    mutable std::deque<std::int64_t> times_{};
    mutable bool isFlood_ = false;
};

}  // namespace nordkeep
