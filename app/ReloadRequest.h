#pragma once

#include <utility>

namespace nordkeep {

/// Somebody wants the translations read again; it is done on the next tick of the system timer.
class ReloadRequest {
 public:
    void Ask() { isAsked_ = true; }
    /// Whether it was asked for since the last time.
    bool Take() { return std::exchange(isAsked_, false); }

 private:
    bool isAsked_ = false;
};

}  // namespace nordkeep
