#pragma once

#include "platform/Text.h"
#include "runtime/Protocol.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// What a line is: what carries its bytes, and what they mean.
struct LineKind {
    std::optional<PortType> type{};  // none for no line, or a word that is none
    std::optional<MessageFormat> format{};
    friend bool operator==(const LineKind&, const LineKind&) = default;
};

/// Whether a line of this kind reads a key of its settings file, of a section other than Translate.
bool ReadsKey(const LineKind& kind, TextView section, TextView key);
inline bool LineReadsKey(PortType type, MessageFormat format, TextView section, TextView key) {
    return ReadsKey({type, format}, section, key);
}
/// Whether lines of every kind read a key.
bool IsCommonKey(TextView section, TextView key);
/// Whether a number from 1 on is needed to open it.
bool NeedsNumber(PortType type);
/// The protocols that a format can raise, for which sets are bound in section Translate.
std::vector<Protocol> ProtocolsOf(MessageFormat format);

}  // namespace nordkeep
