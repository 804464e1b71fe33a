#include "console/window/AlarmRate.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::int64_t kSpanMs = 60'000;
constexpr std::size_t kFloodBegins = 11;
constexpr std::size_t kFloodEnds = 5;

}  // namespace

void AlarmRate::Note(std::int64_t nowMs) {
    const bool wasFlood = IsFlood(nowMs);
    times_.push_back(nowMs);
    // The count matters only up to where a flood begins.
    if (times_.size() > kFloodBegins) times_.pop_front();
    isFlood_ = wasFlood || CountAt(nowMs) >= kFloodBegins;
}

// Between two alarms the count only falls.
bool AlarmRate::IsFlood(std::int64_t nowMs) const {
    return isFlood_ && CountAt(nowMs) >= kFloodEnds;
}

std::size_t AlarmRate::CountAt(std::int64_t nowMs) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(times_, [nowMs](std::int64_t time) { return time > nowMs - kSpanMs; }));
}

}  // namespace nordkeep
