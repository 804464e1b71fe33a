#include "reports/AlarmFlood.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::size_t kFloodBegins = 11;
constexpr std::size_t kFloodEnds = 5;

}  // namespace

void AlarmFlood::Note(std::int64_t nowMs) {
    const bool wasFlood = IsFlood(nowMs);
    times_.push_back(nowMs);
    // The count matters only up to where a flood begins.
    if (times_.size() > kFloodBegins) times_.pop_front();
    isFlood_ = wasFlood || CountAt(nowMs) >= kFloodBegins;
}

// Between two alarms the count only falls.
bool AlarmFlood::IsFlood(std::int64_t nowMs) const {
    const auto end = EndMs();
    return end && nowMs < *end;
}

std::optional<std::int64_t> AlarmFlood::EndMs() const {
    if (!isFlood_ || times_.size() < kFloodEnds) return std::nullopt;
    return times_[times_.size() - kFloodEnds] + kSpanMs;
}

std::size_t AlarmFlood::CountAt(std::int64_t nowMs) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(times_, [nowMs](std::int64_t time) { return time > nowMs - kSpanMs; }));
}

}  // namespace nordkeep
