#include "runtime/StallWatch.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextStoodStill = 3608;
constexpr int kBeatMs = 250;
constexpr int kLongestStallMs = 1000;

}  // namespace

StallWatch::Mark::Mark(StallWatch& watch, TextView name)
    : watch_(watch), name_(name), beganAtMs_(watch.clock_.MonotonicMs()), outer_(watch.innermost_) {
    watch_.innermost_ = this;
}

StallWatch::Mark::~Mark() {
    watch_.innermost_ = outer_;
    // What lies before the last beat was waited for in a nested loop.
    const std::int64_t tookMs = watch_.clock_.MonotonicMs() - std::max(beganAtMs_, watch_.lastBeatMs_);
    if (tookMs <= watch_.longestMs_) return;
    watch_.longestMs_ = tookMs;
    watch_.longest_ = name_;
}

StallWatch::StallWatch(const Clock& clock, EventLoop& loop, SysLog& log, const Language& language)
    : clock_(clock), log_(log), language_(language), timer_(loop.NewTimer([this] { Beat(); })) {}

void StallWatch::Start() {
    lastBeatMs_ = clock_.MonotonicMs();
    longestMs_ = 0;
    timer_->Start(kBeatMs);
}

void StallWatch::Beat() {
    const std::int64_t now = clock_.MonotonicMs();
    const std::int64_t gapMs = now - std::exchange(lastBeatMs_, now);
    // Of the gap the timer's own interval may have been an ordinary wait; a mark knows it better.
    const std::int64_t stallMs = std::max(gapMs - kBeatMs, longestMs_);
    longestStallMs_ = std::max(longestStallMs_, stallMs);
    if (stallMs > kLongestStallMs) Tell(stallMs);
    longestMs_ = 0;
}

void StallWatch::Tell(std::int64_t stallMs) const {
    // A handler that stalled and waits since then has not ended its mark.
    const bool isUnended = innermost_ != nullptr && longestMs_ < stallMs / 2;
    const Text name = isUnended ? Text(innermost_->name_) : longestMs_ > 0 ? longest_ : Text();
    log_.WriteSysLog(language_.GetLanguageText(kTextStoodStill) + std::to_string(stallMs) + " ms" +
                         (name.empty() ? Text() : " (" + name + ")"),
                     LogKind::Failure);
}

}  // namespace nordkeep
