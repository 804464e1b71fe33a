#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// The periodic work and the switches of start-up.
struct EngineSettings {
    int SystemTimerInterval = 100;  // ms, 10 to 65535
    int LogFileSavePeriod = 30;     // days; below 1 is off
    int JournalDays = 760;          // days that entries of the journal are kept; below 1: for ever
    bool ContinousDebugToFile = false;
    bool ContinousDebugFormatAsHex = false;
    int LineFailureBannerTime = 30;         // seconds until a line that fails is told above the lists
    bool CreateLogFile = false;             // an external program empties the alarm log
    Text AlarmLogFileName{"Alarm.LOG"};     // its argument
    int AlarmLogFileMaxSize = 0;            // KiB after which NKCopy begins a new file; 0: none
    bool AlarmLogFileDaily = false;         // NKCopy begins a new file each day
    int AlarmLogFileCyclicWritePeriod = 0;  // ms, or seconds by CyclicWriteTimePeriodInSeconds; 0 is off
    Text AlarmLogFileCyclicWriteString{};
    int TorvexCyclicWritePeriod = 0;  // as the period above
    Text TorvexCyclicWriteString{};
    int TorvexCyclicLineFeedPeriod = 0;  // ticks of the open timer; 0 is off
    bool CyclicWriteTimePeriodInSeconds = false;
};

std::span<const SettingRow<EngineSettings>> EngineSettingRows();
/// With the periods in ms.
EngineSettings LoadEngineSettings(const Settings& files);

}  // namespace nordkeep
