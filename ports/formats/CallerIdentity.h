#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SettingRow.h"

#include <optional>

namespace nordkeep {

/// An object that a call keeps alive, and the protocol under which its set is bound.
struct KnownCaller {
    cTranslate* set = nullptr;
    Text idCode{};
    Protocol protocol{};
};

/// Knows the objects that take calls from a number as a sign of life.
class CallerBook {
 public:
    virtual ~CallerBook() = default;
    virtual std::optional<KnownCaller> FindCaller(TextView number) const = 0;
};

/// How a port turns calls, which carry a number and no telegram, into events.
struct CallSettings {
    bool ParseCLIDasProtocol = false;  // the number itself is the ID code
    Text CLIdTranslatedSIAAliveTestType{"99"};
    Text CLIdTranslatedContactIDAliveTestType{"99"};
    Text CLIdTranslatedDefaultAliveTestType{"99"};
};

std::span<const SettingRow<CallSettings>> CallSettingRows();

/// Makes `decoded`, which has the caller's number as Originator, the event of a call. A caller whom nobody
/// knows leaves it as it is.
void MakeCall(DecodedEvent& decoded, const CallSettings& settings, const CallerBook& callers);

}  // namespace nordkeep
