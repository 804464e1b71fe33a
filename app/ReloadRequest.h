#pragma once

#include <utility>

namespace nordkeep {

/// Somebody wants the translations, the settings, or those of the ports read again; it is done on the next
/// tick of the system timer.
class ReloadRequest {
 public:
    void Ask() { isAsked_ = true; }
    /// Whether it was asked for since the last time.
    bool Take() { return std::exchange(isAsked_, false); }
    void AskForSettings() { isAskedForSettings_ = true; }
    void AskForPorts() { arePortsAsked_ = true; }
    bool TakePorts() { return std::exchange(arePortsAsked_, false); }
    bool TakeSettings() { return std::exchange(isAskedForSettings_, false); }

 private:
    bool isAsked_ = false;
    bool isAskedForSettings_ = false;
    bool arePortsAsked_ = false;
};

}  // namespace nordkeep
