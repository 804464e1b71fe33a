#pragma once

#include <utility>

namespace nordkeep {

/// Somebody wants the translations, or the settings, read again; it is done on the next tick of the system
/// timer.
class ReloadRequest {
 public:
    void Ask() { isAsked_ = true; }
    /// Whether it was asked for since the last time.
    bool Take() { return std::exchange(isAsked_, false); }
    void AskForSettings() { isAskedForSettings_ = true; }
    bool TakeSettings() { return std::exchange(isAskedForSettings_, false); }

 private:
    bool isAsked_ = false;
    bool isAskedForSettings_ = false;
};

}  // namespace nordkeep
