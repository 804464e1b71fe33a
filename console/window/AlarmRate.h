#pragma once

#include <cstddef>
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
    /// The alarms of the minute before.
    std::size_t CountAt(std::int64_t nowMs) const;

    std::deque<std::int64_t> times_{};  // ascending
    bool isFlood_ = false;              // as it was at the last alarm
};

}  // namespace nordkeep
