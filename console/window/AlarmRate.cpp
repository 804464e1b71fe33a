#include "console/window/AlarmRate.h"

#include <cstddef>

namespace nordkeep {
namespace {

constexpr std::int64_t kSpanMs = 60'000;
constexpr std::size_t kFloodBegins = 11;
constexpr std::size_t kFloodEnds = 5;

}  // namespace

void AlarmRate::Note(std::int64_t nowMs) {
    times_.push_back(nowMs);
    // The count matters only up to where a flood begins.
    if (times_.size() > kFloodBegins) times_.pop_front();
    IsFlood(nowMs);
}

bool AlarmRate::IsFlood(std::int64_t nowMs) const {
    Forget(nowMs);
    if (times_.size() >= kFloodBegins) isFlood_ = true;
    if (times_.size() < kFloodEnds) isFlood_ = false;
    return isFlood_;
}

void AlarmRate::Forget(std::int64_t nowMs) const {
    while (!times_.empty() && times_.front() <= nowMs - kSpanMs) times_.pop_front();
}

}  // namespace nordkeep
