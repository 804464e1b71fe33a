#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SettingTable.h"
#include "translation/ObjectLookup.h"

#include <functional>
#include <optional>

namespace nordkeep {

/// Finds the object that takes calls from a number as a sign of life.
using CallerLookup = std::function<std::optional<CallerMatch>(TextView number)>;

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
void MakeCall(DecodedEvent& decoded, const CallSettings& settings, const CallerLookup& findCaller);

}  // namespace nordkeep
