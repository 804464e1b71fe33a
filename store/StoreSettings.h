#pragma once

#include "runtime/SharedSettings.h"
#include "store/Alarm.h"

namespace nordkeep {

/// Sizes and limits of the store.
struct StoreSettings : TestPrioSettings, SmallCommentSettings, AlarmLogDateSettings {
    int MaxAlarms = 5000;             // ordinary alarms kept; below 1 is off
    int MaxTestAlarms = -99;          // test alarms kept; below 1 is off
    int MaxAlarmDays = 30;            // days since arrival; below 1 is off
    int WidthForNumber = 4;           // digits of the alarm number
    Text ArchiveLogFileTimeFormat{};  // despite its name the format of an archive line; empty: all fields
};

std::span<const SettingRow<StoreSettings>> StoreSettingRows();

/// "-1", or the priority that resets the second alive test.
bool IsTestAlarm(const cAlarm& alarm, const StoreSettings& settings);
/// A damaged date would count as one of long ago, and the record be deleted for it.
bool HasPlausibleArrival(const cAlarm& alarm);
/// Has arrived before the days that alarms are kept; never for a damaged date.
bool IsTooOld(const cAlarm& alarm, const StoreSettings& settings, OleDate today);

}  // namespace nordkeep
