#include "store/StoreSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kCentre = SettingScope::Centre;
using Row = SettingRow<StoreSettings>;

const std::array kRows = {
    Row{kGeneral, "MaxAlarms", "5000", kCentre, &StoreSettings::MaxAlarms},
    Row{kGeneral, "MaxTestAlarms", "-99", kCentre, &StoreSettings::MaxTestAlarms},
    Row{kGeneral, "MaxAlarmDays", "30", kCentre, &StoreSettings::MaxAlarmDays},
    Row{kGeneral, "AliveTest2ResetTimerPrio", "9999", kCentre, &StoreSettings::AliveTest2ResetTimerPrio},
    Row{kGeneral, "WidthForNumber", "4", SettingScope::Workstation, &StoreSettings::WidthForNumber},
    Row{kGeneral, "SmallCommentSize", "0", kCentre, &StoreSettings::SmallCommentSize, 0, 128},
    Row{kGeneral, "ArchiveLogFileTimeFormat", "", kCentre, &StoreSettings::ArchiveLogFileTimeFormat},
    Row{kGeneral, "AlarmLogFileDateFormat", "Short Date", kCentre, &StoreSettings::AlarmLogFileDateFormat},
    Row{kGeneral, "AlarmLogFileTimeFormat", "Long Time", kCentre, &StoreSettings::AlarmLogFileTimeFormat},
};

}  // namespace

std::span<const SettingRow<StoreSettings>> StoreSettingRows() {
    return kRows;
}

}  // namespace nordkeep
