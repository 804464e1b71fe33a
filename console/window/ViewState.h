#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// What of the window's state survives a clean stop, section General of the workstation's own settings.
struct ViewState {
    bool ShowSysLog = false;
    bool ShowDebug = false;
    bool ShowIdCodes = false;
    bool ShowTypes = false;
    bool ShowDataCodes = false;
    bool ShowTabAutomatic = false;
    bool Check_Debug_HexCode = false;
    bool Check_Debug_ShowLastRow = false;
    bool AlwaysShowLastAlarm = false;
};

std::span<const SettingRow<ViewState>> ViewStateRows();
/// Writes the state to the main settings file; a key that already says so is left alone.
void SaveViewState(Settings& files, const ViewState& state);

}  // namespace nordkeep
