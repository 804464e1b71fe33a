#include "console/window/ConsoleSettings.h"

#include <array>

namespace nordkeep {
namespace {

using C = ConsoleSettings;
constexpr SettingScope kOwn = SettingScope::Workstation;
constexpr SettingScope kShared = SettingScope::Centre;

const std::array kRows = {
    SettingRow<C>{"General", "ToolBar", "", kOwn, &C::ToolBar},
    SettingRow<C>{"General", "AlarmDateFormat", "Short Date", kOwn, &C::AlarmDateFormat},
    SettingRow<C>{"General", "AlarmTimeFormat", "Long Time", kOwn, &C::AlarmTimeFormat},
    SettingRow<C>{"General", "UnackedStatusBarFormat", "", kOwn, &C::UnackedStatusBarFormat},
    SettingRow<C>{"General", "AckedStatusBarFormat", "", kOwn, &C::AckedStatusBarFormat},
    SettingRow<C>{"General", "ViewAlarmStatusBar", "", kOwn, &C::ViewAlarmStatusBar},
    SettingRow<C>{"General", "ViewStatusAsNumber", "0", kOwn, &C::ViewStatusAsNumber},
    SettingRow<C>{"General", "ViewAlarmToolTip", "0", kOwn, &C::ViewAlarmToolTip},
    SettingRow<C>{"General", "ViewTypeCodeInfo", "0", kOwn, &C::ViewTypeCodeInfo},
    SettingRow<C>{"General", "AllowEdit", "0", kOwn, &C::AllowEdit},
    SettingRow<C>{"General", "FloatingSysLogWindow", "0", kOwn, &C::FloatingSysLogWindow},
    SettingRow<C>{"General", "FloatingDebugWindow", "0", kOwn, &C::FloatingDebugWindow},
    SettingRow<C>{"General", "FullRowSelect", "1", kOwn, &C::FullRowSelect},
    SettingRow<C>{"General", "ShowInTaskBar", "1", kOwn, &C::ShowInTaskBar},
    SettingRow<C>{"General", "FontName", "", kOwn, &C::FontName},
    SettingRow<C>{"General", "BackColor", "", kOwn, &C::BackColor},
    SettingRow<C>{"General", "StatusBarFontSize", "0", kOwn, &C::StatusBarFontSize, 0, 40},
    SettingRow<C>{"General", "StatusBarForeColor", "", kOwn, &C::StatusBarForeColor},
    SettingRow<C>{"General", "StatusBarBackColor", "", kOwn, &C::StatusBarBackColor},
    SettingRow<C>{"General", "DebugForeColor", "-1", kOwn, &C::DebugForeColor},
    SettingRow<C>{"General", "DebugBackColor", "-1", kOwn, &C::DebugBackColor},
    SettingRow<C>{"General", "MinColumnWidth", "0", kOwn, &C::MinColumnWidth, 0, 4000},
    SettingRow<C>{"General", "LogViewSize", "1000", kShared, &C::LogViewSize, 1, 1000000},
    SettingRow<C>{"General", "DebugViewSize", "200", kShared, &C::DebugViewSize, 1, 1000000},
    SettingRow<C>{"General", "AlarmCopyDelimiter", "9", kShared, &C::AlarmCopyDelimiter},
    SettingRow<C>{"General", "EditApp", "", kOwn, &C::EditApp},
    SettingRow<C>{"General", "TypeAndIDCodeEditApp", "", kOwn, &C::TypeAndIDCodeEditApp},
    SettingRow<C>{"General", "DataCodeEditApp", "Notepad.exe", kOwn, &C::DataCodeEditApp},
};

}  // namespace

std::span<const SettingRow<ConsoleSettings>> ConsoleSettingRows() {
    return kRows;
}

}  // namespace nordkeep
