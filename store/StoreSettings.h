#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// Sizes and limits of the store.
struct StoreSettings {
    int MaxAlarms = 5000;                 // ordinary alarms kept; below 1 is off
    int MaxTestAlarms = -99;              // test alarms kept; below 1 is off
    int MaxAlarmDays = 30;                // days since arrival; below 1 is off
    int AliveTest2ResetTimerPrio = 9999;  // alarms of this priority are test alarms; 9999 is off
    int WidthForNumber = 4;               // digits of the alarm number
    int SmallCommentSize = 0;             // characters of the small comment in event files
    Text ArchiveLogFileTimeFormat{};      // despite its name the format of an archive line; empty: all fields
    Text AlarmLogFileDateFormat{};
    Text AlarmLogFileTimeFormat{};
};

std::span<const SettingRow<StoreSettings>> StoreSettingRows();

}  // namespace nordkeep
