#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

struct RobofonSettings : TelegramTimeSettings {};

std::span<const SettingRow<RobofonSettings>> RobofonSettingRows();

inline constexpr std::size_t kRobofonLength = 26;

/// Decodes the front of what a line of format "Robofon (RBM600)" has received: telegrams of 26 bytes from
/// STX to the check byte behind ETX, and BEL as line test.
TelegramStep NextRobofonStep(TextView received, const RobofonSettings& settings, OleDate now);

/// What a telegram of 26 bytes holds between its marks.
struct RobofonFields {
    char kind = 'P';
    Text timeOrFirstPart{};  // ten characters: YYMMDDHHNN, or the first eight of a long ID code
    char status = 0;         // receiver in bits 4 to 6, speech in bit 3, line in bits 0 to 2
    char classCode = '0';
    Text id{};  // cut or filled with blanks to eight characters
};
Text EncodeRobofon(const RobofonFields& fields);

}  // namespace nordkeep
