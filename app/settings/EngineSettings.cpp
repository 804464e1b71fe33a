#include "app/settings/EngineSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kMostSeconds = 2'000'000;
using E = EngineSettings;

const std::array kRows = {
    SettingRow<E>{kGeneral, "SystemTimerInterval", kCentre, &E::SystemTimerInterval},
    SettingRow<E>{kGeneral, "LogFileSavePeriod", kCentre, &E::LogFileSavePeriod},
    SettingRow<E>{kGeneral, "JournalDays", kCentre, &E::JournalDays},
    SettingRow<E>{kGeneral, "ContinousDebugToFile", kCentre, &E::ContinousDebugToFile},
    SettingRow<E>{kGeneral, "ContinousDebugFormatAsHex", kCentre, &E::ContinousDebugFormatAsHex},
    SettingRow<E>{kGeneral, "LineFailureBannerTime", kCentre, &E::LineFailureBannerTime, 0, 86400},
    SettingRow<E>{kGeneral, "CreateLogFile", kCentre, &E::CreateLogFile},
    SettingRow<E>{kGeneral, "AlarmLogFileName", SettingScope::Workstation, &E::AlarmLogFileName},
    SettingRow<E>{kGeneral, "AlarmLogFileMaxSize", SettingScope::Workstation, &E::AlarmLogFileMaxSize, 0},
    SettingRow<E>{kGeneral, "AlarmLogFileDaily", SettingScope::Workstation, &E::AlarmLogFileDaily},
    SettingRow<E>{kGeneral, "AlarmLogFileCyclicWritePeriod", kCentre, &E::AlarmLogFileCyclicWritePeriod, 0},
    SettingRow<E>{kGeneral, "AlarmLogFileCyclicWriteString", kCentre, &E::AlarmLogFileCyclicWriteString},
    SettingRow<E>{kGeneral, "TorvexCyclicWritePeriod", kCentre, &E::TorvexCyclicWritePeriod, 0},
    SettingRow<E>{kGeneral, "TorvexCyclicWriteString", kCentre, &E::TorvexCyclicWriteString},
    SettingRow<E>{kGeneral, "TorvexCyclicLineFeedPeriod", kCentre, &E::TorvexCyclicLineFeedPeriod, 0},
    SettingRow<E>{kGeneral, "CyclicWriteTimePeriodInSeconds", kCentre, &E::CyclicWriteTimePeriodInSeconds},
};

}  // namespace

std::span<const SettingRow<EngineSettings>> EngineSettingRows() {
    return kRows;
}

EngineSettings LoadEngineSettings(const Settings& files) {
    constexpr int kDefaultSystemTimerMs = 100;
    EngineSettings settings = LoadSettings(files, EngineSettingRows());
    const int interval = settings.SystemTimerInterval;
    if (interval < 10 || interval > 65535) settings.SystemTimerInterval = kDefaultSystemTimerMs;
    if (settings.CyclicWriteTimePeriodInSeconds) {
        for (int* period : {&settings.AlarmLogFileCyclicWritePeriod, &settings.TorvexCyclicWritePeriod}) {
            *period = std::min(*period, kMostSeconds) * 1000;
        }
    }
    return settings;
}

}  // namespace nordkeep
