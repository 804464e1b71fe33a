#include "console/window/ConsoleSettings.h"

#include <array>

namespace nordkeep {
namespace {

using C = ConsoleSettings;
constexpr SettingScope kOwn = SettingScope::Workstation;
constexpr SettingScope kShared = SettingScope::Centre;

const std::array kRows = {
    SettingRow<C>{"General", "ToolBar", kOwn, &C::ToolBar},
    kAlarmDateRow<C>,
    kAlarmTimeRow<C>,
    SettingRow<C>{"General", "UnackedStatusBarFormat", kOwn, &C::UnackedStatusBarFormat},
    SettingRow<C>{"General", "AckedStatusBarFormat", kOwn, &C::AckedStatusBarFormat},
    SettingRow<C>{"General", "ViewAlarmStatusBar", kOwn, &C::ViewAlarmStatusBar},
    SettingRow<C>{"General", "ViewStatusAsNumber", kOwn, &C::ViewStatusAsNumber},
    SettingRow<C>{"General", "ViewAlarmToolTip", kOwn, &C::ViewAlarmToolTip},
    SettingRow<C>{"General", "ViewTypeCodeInfo", kOwn, &C::ViewTypeCodeInfo},
    SettingRow<C>{"General", "FloatingSysLogWindow", kOwn, &C::FloatingSysLogWindow},
    SettingRow<C>{"General", "FloatingDebugWindow", kOwn, &C::FloatingDebugWindow},
    SettingRow<C>{"General", "FullRowSelect", kOwn, &C::FullRowSelect},
    SettingRow<C>{"General", "ShowInTaskBar", kOwn, &C::ShowInTaskBar},
    SettingRow<C>{"General", "CommentSheetPlace", kOwn, &C::CommentSheetPlace},
    SettingRow<C>{"General", "EscalationTimes", kOwn, &C::EscalationTimes},
    SettingRow<C>{"General", "ColorScheme", kOwn, &C::ColorScheme, 0, 4},
    SettingRow<C>{"General", "FontName", kOwn, &C::FontName},
    SettingRow<C>{"General", "BackColor", kOwn, &C::BackColor},
    SettingRow<C>{"General", "StatusBarFontSize", kOwn, &C::StatusBarFontSize, 0, 40},
    SettingRow<C>{"General", "StatusBarForeColor", kOwn, &C::StatusBarForeColor},
    SettingRow<C>{"General", "StatusBarBackColor", kOwn, &C::StatusBarBackColor},
    SettingRow<C>{"General", "DebugForeColor", kOwn, &C::DebugForeColor},
    SettingRow<C>{"General", "DebugBackColor", kOwn, &C::DebugBackColor},
    SettingRow<C>{"General", "MinColumnWidth", kOwn, &C::MinColumnWidth, 0, 4000},
    SettingRow<C>{"General", "LogViewSize", kShared, &C::LogViewSize, 1, 1000000},
    SettingRow<C>{"General", "DebugViewSize", kShared, &C::DebugViewSize, 1, 1000000},
    SettingRow<C>{"General", "AlarmCopyDelimiter", kShared, &C::AlarmCopyDelimiter},
    SettingRow<C>{"General", "UseDynamicFormForObjectInfo", kShared, &C::UseDynamicFormForObjectInfo},
    SettingRow<C>{"General", "EditApp", kOwn, &C::EditApp},
    SettingRow<C>{"General", "TypeAndIDCodeEditApp", kOwn, &C::TypeAndIDCodeEditApp},
    SettingRow<C>{"General", "DataCodeEditApp", kOwn, &C::DataCodeEditApp},
};

}  // namespace

std::span<const SettingRow<ConsoleSettings>> ConsoleSettingRows() {
    return kRows;
}

}  // namespace nordkeep
