#pragma once

#include "console/window/SettingsList.h"

namespace nordkeep {

/// The settings of all subsystems, for reading.
SettingsList ListSettings(const Settings& files, Text path);

}  // namespace nordkeep
