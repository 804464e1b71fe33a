#include "pipeline/ResetSettings.h"

#include "runtime/SettingTable.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kCentre = SettingScope::Centre;

const std::array kRows = {
    SettingRow<ResetSettings>{kGeneral, "AutoAckRepeatedEvents", kCentre,
                              &ResetSettings::AutoAckRepeatedEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoCloseResetEvents", kCentre,
                              &ResetSettings::AutoCloseResetEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoAckResetEvents", kCentre, &ResetSettings::AutoAckResetEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoAckResetEventsTimeout", kCentre,
                              &ResetSettings::AutoAckResetEventsTimeout, 1},
    kParkingRow<ResetSettings>,
};

}  // namespace

std::span<const SettingRow<ResetSettings>> ResetSettingRows() {
    return kRows;
}

ResetSettings LoadResetSettings(const Settings& files) {
    ResetSettings settings = LoadSettings(files, ResetSettingRows());
    if (settings.AutoAckResetEvents < 0 || settings.AutoAckResetEvents > 4) settings.AutoAckResetEvents = 0;
    return settings;
}

}  // namespace nordkeep
