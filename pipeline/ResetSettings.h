#pragma once

#include "runtime/Settings.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

/// How repeats and resets end alarms by themselves.
struct ResetSettings : ParkingSettings {
    int AutoAckRepeatedEvents = 0;      // seconds; 0 is off
    bool AutoCloseResetEvents = false;  // the resetting event itself is acknowledged
    int AutoAckResetEvents = 0;         // 0 nothing, 1 at once, 2 after the delay
    int AutoAckResetEventsTimeout = 1;  // minutes of that delay, at least 1
};

std::span<const SettingRow<ResetSettings>> ResetSettingRows();
ResetSettings LoadResetSettings(const Settings& files);

}  // namespace nordkeep
