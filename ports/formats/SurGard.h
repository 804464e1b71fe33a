#pragma once

#include "ports/formats/SiaWait.h"

namespace nordkeep {

struct SurGardSettings {
    bool MLR2QualifierAsNumber = true;  // the qualifiers E, R and P become 1, 3 and 6
    SiaSettings sia{};
    Text unknownMessage{};  // what the operator reads of a message of no known family
};

std::span<const SettingRow<SurGardSettings>> SurGardSettingRows();

/// Decodes the front of what a line of format "Sur-Gard (MLR2-DG)" has received: a message up to DC4.
TelegramStep NextSurGardStep(TextView received, const SurGardSettings& settings, SiaWait& wait, OleDate now);

}  // namespace nordkeep
