#pragma once

#include "runtime/SettingCatalogue.h"

namespace nordkeep {

/// Every key that a settings file of this program may hold: the one list of all settings tables, and of what
/// is read without one.
const SettingCatalogue& KnownSettings();

}  // namespace nordkeep
