#pragma once

#include "platform/Clock.h"

#include <algorithm>
#include <cstddef>

namespace nordkeep {

/// How many pieces of a long work one turn of the loop has room for. What they leave to the end of the turn,
/// such as files that are written or deleted then, is the file system's affair, and can take a millisecond
/// and more for each: so the last turn says how many the next one may do.
class FittingSlice {
 public:
    FittingSlice(const Clock& clock, std::size_t first) : clock_(clock), most_(first) {}

    void Begin() {
        const std::int64_t now = clock_.MonotonicMs();
        if (beganMs_ >= 0 && done_ > 0) Fit(now - beganMs_);
        beganMs_ = now;
        done_ = 0;
    }
    void NoteDone(std::size_t pieces) { done_ += pieces; }
    bool IsFull() const { return done_ >= most_ || clock_.MonotonicMs() >= beganMs_ + kMostMsOfSlice; }
    /// No further slice follows in the next turn.
    void End() { beganMs_ = -1; }

 private:
    static constexpr int kMostMsOfSlice = 8;
    static constexpr int kMostMsOfTurn = 20;
    static constexpr std::size_t kMost = 100;

    void Fit(std::int64_t turnMs) {
        const auto fitting = turnMs <= 0 ? kMost : done_ * kMostMsOfTurn / static_cast<std::size_t>(turnMs);
        most_ = std::clamp(fitting, std::size_t{1}, std::min(most_ * 2, kMost));
    }

    const Clock& clock_;
    std::size_t most_;
    std::size_t done_ = 0;       // in the slice in hand
    std::int64_t beganMs_ = -1;  // -1 when none is to be continued
};

}  // namespace nordkeep
