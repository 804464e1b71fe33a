#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace nordkeep {

/// How many bytes the callers of a port who are gone have left to be decoded. While it is much, no further
/// one is let in: who wants to leave more waits with the system, and costs neither memory nor a long turn of
/// the loop.
class LeftBehind {
 public:
    /// What may wait, besides what one caller can leave in one go.
    static constexpr std::size_t kMost = 4 << 20;

    /// `hold` is told when callers have to wait from now on, and when they may come again.
    explicit LeftBehind(std::function<void(bool)> hold) : hold_(std::move(hold)) {}

    void Add(std::size_t bytes) { Set(bytes_ + bytes); }
    /// Decoded, or given up.
    void Drop(std::size_t bytes) { Set(bytes_ - bytes); }

 private:
    void Set(std::size_t bytes) {
        const bool wasMuch = bytes_ > kMost;
        bytes_ = bytes;
        const bool isMuch = bytes_ > kMost;
        if (isMuch != wasMuch) hold_(isMuch);
    }

    std::function<void(bool)> hold_;
    std::size_t bytes_ = 0;
};

}  // namespace nordkeep
