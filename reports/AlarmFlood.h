#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace nordkeep {

/// Whether alarms come faster than a person can deal with them: begins with more than ten within ten minutes
/// and ends below five. The one rule of it, for the window and for reports.
class AlarmFlood {
 public:
    static constexpr std::int64_t kSpanMs = 600'000;

    /// A new alarm, at a time that only goes forward, ms.
    void Note(std::int64_t nowMs);
    bool IsFlood(std::int64_t nowMs) const;
    /// When the flood of the last alarm is over unless another one comes; none without a flood.
    std::optional<std::int64_t> EndMs() const;

 private:
    std::size_t CountAt(std::int64_t nowMs) const;

    std::deque<std::int64_t> times_{};  // ascending
    bool isFlood_ = false;              // as it was at the last alarm
};

}  // namespace nordkeep
