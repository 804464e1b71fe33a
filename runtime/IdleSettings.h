#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// Keys that settings files may hold and that steer nothing.
struct IdleSettings {
    int AliveTestTypeReset = 0;
    bool AllowEdit = false;
};

std::span<const SettingRow<IdleSettings>> IdleSettingRows();

}  // namespace nordkeep
