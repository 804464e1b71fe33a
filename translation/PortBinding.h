#pragma once

#include "platform/Text.h"

#include <array>
#include <vector>

namespace nordkeep {

struct cTranslate;

/// How many protocol numbers there are; a translation number is one of 0 to 40.
inline constexpr int kProtocolCount = 41;

/// The translation sets of one port: for each protocol number an ordered list. The sets belong to
/// Translations, which renews the lists at every reload.
struct PortBinding {
    Text portName{};
    std::array<std::vector<cTranslate*>, kProtocolCount> sets{};
    std::array<Text, kProtocolCount> protocolNames{};  // empty for a number without a set
};

}  // namespace nordkeep
