#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// The spool of the alarm log, below the data folder; an external program empties it.
inline constexpr TextView kAlarmLogSpool = "AlarmLogFile.spl";

/// What happens to an alarm record once it is complete. The formats are templates of BuildAlarmText.
struct DispatchSettings {
    bool SendNotTranslatedToOldAlarms = false;
    Text AlarmFileFormat{};
    Text AlarmDateFormat{};
    Text AlarmTimeFormat{};
    Text AlarmLogFileFileFormat{};
    Text AlarmLogFileDateFormat{};
    Text AlarmLogFileTimeFormat{};
    bool CreateTypeLogFiles = false;
    bool CreateObjectLogFiles = false;
    Text ObjectLogFileFormat{};
    Text ObjectLogFileDateFormat{};
    Text ObjectLogFileTimeFormat{};
};

/// When the operator's place reacts to an alarm. A range is "low-high"; low -1 is every priority.
struct DeskSettings {
    bool AlarmPopup = true;
    bool AutoViewComment = false;
    bool AutoViewMap = false;
    int AlarmPictureTime = -1;  // below 0: no picture
    bool AlarmPictureUseSoundPrio = false;
    int SpeechPictureTime = -1;  // below 0: speech makes no difference to the picture
    Text SoundPrio{};
    int AlarmSound = 0;  // 1 beep, 2 once, 3 until stopped
    Text AlarmSoundFile{};
    Text RelayPrio{};
    int RelayPort = -1;
    int PrinterPort = -1;
    Text ContinousPrinterFormat{};
    Text PrinterDateFormat{};
    Text PrinterTimeFormat{};
    bool PrinterISO2DOS = false;
};

/// The paging and SMS dispatcher.
struct TorvexSettings {
    int Port = -1;   // TCP port; below 1: not configured
    Text Address{};  // empty: the system listens on the port, else it connects to this host
    Text StatusToBePassedToTorvex{};
    Text Format{};
    int DelayAndWaitForAck = 0;  // seconds; 0 sends at once
    bool RetryFailedTransmissions = false;
};

std::span<const SettingRow<DispatchSettings>> DispatchSettingRows();
std::span<const SettingRow<DeskSettings>> DeskSettingRows();
std::span<const SettingRow<TorvexSettings>> TorvexSettingRows();

/// A range of priorities.
struct PriorityRange {
    long low = -1;
    long high = -1;
    bool Holds(long priority) const { return low == -1 || (priority >= low && priority <= high); }
};
/// "low-high", or one number for both; "-1" is every priority.
PriorityRange ParsePriorityRange(TextView text);

}  // namespace nordkeep
