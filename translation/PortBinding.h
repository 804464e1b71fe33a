#pragma once

#include "platform/Text.h"
#include "runtime/Protocol.h"

#include <array>
#include <vector>

namespace nordkeep {

struct cTranslate;

/// The translation sets of one port: for each protocol number an ordered list. The sets belong to
/// Translations, which renews the lists at every reload.
struct PortBinding {
    Text portName{};
    std::array<std::vector<cTranslate*>, kProtocolCount> sets{};
    std::array<Text, kProtocolCount> protocolNames{};  // empty for a number without a set

    /// The sets of a known protocol.
    std::vector<cTranslate*>& SetsOf(Protocol protocol) {
        return sets[static_cast<std::size_t>(NumberOf(protocol))];
    }
    const std::vector<cTranslate*>& SetsOf(Protocol protocol) const {
        return sets[static_cast<std::size_t>(NumberOf(protocol))];
    }
};

}  // namespace nordkeep
