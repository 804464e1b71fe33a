#pragma once

#include "ports/formats/TelegramStep.h"

namespace nordkeep {

struct RobofonSettings {
    bool TimeStampFromRBM = false;  // the event's time is the telegram's
};

inline constexpr std::size_t kRobofonLength = 26;

/// Decodes the front of what a line of format "Robofon (RBM600)" has received: telegrams of 26 bytes from
/// STX to the check byte behind ETX, and BEL as line test.
TelegramStep NextRobofonStep(TextView received, const RobofonSettings& settings, OleDate now);

/// XOR of all bytes.
char XorOf(TextView bytes);

}  // namespace nordkeep
