#pragma once

#include "runtime/SharedSettings.h"

namespace nordkeep {

/// The spool of the alarm log, below the data folder; an external program empties it.
inline constexpr TextView kAlarmLogSpool = "AlarmLogFile.spl";

/// The lines of log files, and those to the dispatcher and to ComCall, unless the settings say otherwise.
inline constexpr TextView kLogFileFormat =
    "[Date]|[Time]|[AlarmCodeToStore]|[ProtocolType]|[TrPrio]|[TrTypeCode]|[TrIDCode]";
inline constexpr TextView kLineFormat =
    "1|[Date]|[Time]|[AlarmCodeToStore]|[ProtocolType]|[TrPrio]|[TrTypeCode]|[TrIDCode]";

/// What happens to an alarm record once it is complete. The formats are templates of BuildAlarmText.
struct DispatchSettings : AlarmDateSettings, AlarmLogDateSettings {
    bool SendNotTranslatedToOldAlarms = false;
    Text AlarmFileFormat{
        "[Date];[Time];[ProtocolType];[TrPrio];[TrIDCode];[TrTypeCode];[AlarmCodeToStore];[Originator]"};
    Text AlarmLogFileFileFormat{kLogFileFormat};
    bool CreateTypeLogFiles = false;
    bool CreateObjectLogFiles = false;
    Text ObjectLogFileFormat{kLogFileFormat};
    Text ObjectLogFileDateFormat{"Short Date"};
    Text ObjectLogFileTimeFormat{"Long Time"};
};

/// When the operator's place reacts to an alarm. A range is "low-high"; low -1 is every priority.
struct DeskSettings : PictureTimeSettings, PrinterDateSettings {
    bool AlarmPopup = true;
    bool AutoViewComment = false;
    bool AutoViewMap = false;
    bool AlarmPictureUseSoundPrio = false;
    Text SoundPrio{"-1"};
    int AlarmSound = 0;  // 1 beep, 2 once, 3 until stopped
    Text AlarmSoundFile{};
    Text AlarmSoundFile1{};  // of priority 1; empty: the one of all
    Text AlarmSoundFile2{};
    Text AlarmSoundFile3{};  // of priority 3 and lower
    Text RelayPrio{"-1"};
    int RelayPort = -1;
    int PrinterPort = -1;
    Text ContinousPrinterFormat{};
    bool PrinterISO2DOS = false;
};

/// The paging and SMS dispatcher.
struct TorvexSettings {
    int Port = -1;   // TCP port; below 1: not configured
    Text Address{};  // empty: the system listens on the port, else it connects to this host
    Text StatusToBePassedToTorvex{"0,1,2,3,4"};
    Text Format{kLineFormat};
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
