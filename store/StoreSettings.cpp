#include "store/StoreSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kNoTestPrio = 9999;
using Row = SettingRow<StoreSettings>;

const std::array kRows = {
    Row{kGeneral, "MaxAlarms", kCentre, &StoreSettings::MaxAlarms},
    Row{kGeneral, "MaxTestAlarms", kCentre, &StoreSettings::MaxTestAlarms},
    Row{kGeneral, "MaxAlarmDays", kCentre, &StoreSettings::MaxAlarmDays},
    kTestPrioRow<StoreSettings>,
    Row{kGeneral, "WidthForNumber", SettingScope::Workstation, &StoreSettings::WidthForNumber},
    kSmallCommentRow<StoreSettings>,
    Row{kGeneral, "ArchiveLogFileTimeFormat", kCentre, &StoreSettings::ArchiveLogFileTimeFormat},
    kAlarmLogDateRow<StoreSettings>,
    kAlarmLogTimeRow<StoreSettings>,
};

}  // namespace

std::span<const SettingRow<StoreSettings>> StoreSettingRows() {
    return kRows;
}

bool IsTestAlarm(const cAlarm& alarm, const StoreSettings& settings) {
    if (alarm.m_TranslatedPrio == "-1") return true;
    const int prio = settings.AliveTest2ResetTimerPrio;
    return prio != kNoTestPrio && LeadingNumber(alarm.m_TranslatedPrio) == prio;
}

bool HasPlausibleArrival(const cAlarm& alarm) {
    constexpr double kYear10000 = 2'958'466;
    const double days = alarm.m_ArrivedTime.Days();
    return days >= 0 && days < kYear10000;
}

bool IsTooOld(const cAlarm& alarm, const StoreSettings& settings, OleDate today) {
    if (!HasPlausibleArrival(alarm)) return false;
    constexpr std::int64_t kDay = 86'400'000;
    const std::int64_t end = alarm.m_ArrivedTime.Milliseconds() + settings.MaxAlarmDays * kDay;
    return settings.MaxAlarmDays > 0 && end < today.Milliseconds();
}

}  // namespace nordkeep
