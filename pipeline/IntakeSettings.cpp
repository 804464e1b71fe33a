#include "pipeline/IntakeSettings.h"

#include <array>

namespace nordkeep {
namespace {

const std::array kIntake = {
    SettingRow<IntakeSettings>{"General", "SIADecodeErrorType", SettingScope::Centre,
                               &IntakeSettings::SIADecodeErrorType, -32768, 32767},
};

const std::array kPriority = {
    SettingRow<PrioritySettings>{"General", "NonTextDefaultPrio", SettingScope::Centre,
                                 &PrioritySettings::NonTextDefaultPrio},
    SettingRow<PrioritySettings>{"General", "AlwaysApplyNonTextDefaultPrio", SettingScope::Centre,
                                 &PrioritySettings::AlwaysApplyNonTextDefaultPrio},
};

}  // namespace

std::span<const SettingRow<IntakeSettings>> IntakeSettingRows() {
    return kIntake;
}
std::span<const SettingRow<PrioritySettings>> PrioritySettingRows() {
    return kPriority;
}

}  // namespace nordkeep
