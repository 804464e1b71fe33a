#pragma once

#include "runtime/SharedSettings.h"

namespace nordkeep {

/// How the operator's window looks and behaves. Colours are numbers with red in the lowest byte; empty or
/// below 0 they are those of the theme.
struct ConsoleSettings : AlarmDateSettings {
    Text ToolBar{};  // empty: shown
    Text UnackedStatusBarFormat{};
    Text AckedStatusBarFormat{};
    Text ViewAlarmStatusBar{};  // empty: shown
    bool ViewStatusAsNumber = false;
    bool ViewAlarmToolTip = false;
    bool ViewTypeCodeInfo = false;
    bool FloatingSysLogWindow = false;
    bool FloatingDebugWindow = false;
    bool FullRowSelect = true;
    bool ShowInTaskBar = true;
    Text CommentSheetPlace{};  // 1 beside the list, 0 a window; empty: beside it where there is room
    Text EscalationTimes{};    // seconds for priority 1, 2, and 3 and lower
    int ColorScheme = 0;       // 0 the desktop's, 1 light, 2 dark, 3 black on white, 4 white on black
    Text FontName{};
    Text BackColor{};
    int StatusBarFontSize = 0;  // points; 0: the font of the system
    Text StatusBarForeColor{};
    Text StatusBarBackColor{};
    Text DebugForeColor{"-1"};
    Text DebugBackColor{"-1"};
    int MinColumnWidth = 0;
    int LogViewSize = 1000;
    int DebugViewSize = 200;
    int AlarmCopyDelimiter = 9;  // character code
    bool UseDynamicFormForObjectInfo = false;
    Text EditApp{};  // programs that edit texts and translation files; empty: the own editor
    Text TypeAndIDCodeEditApp{};
    Text DataCodeEditApp{"Notepad.exe"};  // steers nothing yet: event codes have no editor

    bool HasToolBar() const { return TrimBlanks(ToolBar).empty() || IsTrue(ToolBar); }
    bool HasStatusLines() const {
        return TrimBlanks(ViewAlarmStatusBar).empty() || IsTrue(ViewAlarmStatusBar);
    }
};

std::span<const SettingRow<ConsoleSettings>> ConsoleSettingRows();

}  // namespace nordkeep
