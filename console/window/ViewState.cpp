#include "console/window/ViewState.h"

#include <array>

namespace nordkeep {
namespace {

using V = ViewState;
constexpr SettingScope kOwn = SettingScope::Workstation;

const std::array kRows = {
    SettingRow<V>{"General", "ShowSysLog", kOwn, &V::ShowSysLog},
    SettingRow<V>{"General", "ShowDebug", kOwn, &V::ShowDebug},
    SettingRow<V>{"General", "ShowIdCodes", kOwn, &V::ShowIdCodes},
    SettingRow<V>{"General", "ShowTypes", kOwn, &V::ShowTypes},
    SettingRow<V>{"General", "ShowDataCodes", kOwn, &V::ShowDataCodes},
    SettingRow<V>{"General", "ShowTabAutomatic", kOwn, &V::ShowTabAutomatic},
    SettingRow<V>{"General", "Check_Debug_HexCode", kOwn, &V::Check_Debug_HexCode},
    SettingRow<V>{"General", "Check_Debug_ShowLastRow", kOwn, &V::Check_Debug_ShowLastRow},
    SettingRow<V>{"General", "AlwaysShowLastAlarm", kOwn, &V::AlwaysShowLastAlarm},
};

}  // namespace

std::span<const SettingRow<ViewState>> ViewStateRows() {
    return kRows;
}

void SaveViewState(Settings& files, const ViewState& state) {
    for (const SettingRow<V>& row : kRows) {
        const bool value = state.**std::get_if<bool V::*>(&row.field);
        const Text text = value ? "-1" : "0";
        if (files.ReadIni(row.section, row.key, "") != text) files.WriteIni(row.section, row.key, text);
    }
}

}  // namespace nordkeep
