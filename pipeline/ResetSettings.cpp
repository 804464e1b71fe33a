#include "pipeline/ResetSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kCentre = SettingScope::Centre;

const std::array kRows = {
    SettingRow<ResetSettings>{kGeneral, "AutoAckRepeatedEvents", "0", kCentre,
                              &ResetSettings::AutoAckRepeatedEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoCloseResetEvents", "0", kCentre,
                              &ResetSettings::AutoCloseResetEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoAckResetEvents", "0", kCentre,
                              &ResetSettings::AutoAckResetEvents},
    SettingRow<ResetSettings>{kGeneral, "AutoAckResetEventsTimeout", "0", kCentre,
                              &ResetSettings::AutoAckResetEventsTimeout, 1},
    SettingRow<ResetSettings>{kGeneral, "UnAssociatedResetEventsTimeout", "0", kCentre,
                              &ResetSettings::UnAssociatedResetEventsTimeout},
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
