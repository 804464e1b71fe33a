#include "pipeline/IntakeSettings.h"

#include <array>

namespace nordkeep {
namespace {

const std::array kIntake = {kSiaErrorRow<IntakeSettings>};

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
