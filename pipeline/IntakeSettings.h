#pragma once

#include "runtime/SettingTable.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

/// Settings of the intake itself that are read at start.
struct IntakeSettings : SiaErrorSettings {};

std::span<const SettingRow<IntakeSettings>> IntakeSettingRows();

/// The two settings that are read at each event, so that a change takes effect at once.
struct PrioritySettings {
    Text NonTextDefaultPrio{};
    bool AlwaysApplyNonTextDefaultPrio = false;
};

std::span<const SettingRow<PrioritySettings>> PrioritySettingRows();

}  // namespace nordkeep
