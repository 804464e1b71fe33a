#pragma once

#include "pipeline/IncomingEvent.h"
#include "store/Alarm.h"
#include "translation/Translate.h"

#include <memory>

namespace nordkeep {

/// One event on its way through the intake: what came in, the record that grows from it, and what the steps
/// tell each other.
struct IntakeRun {
    const IncomingEvent& event;
    std::unique_ptr<cAlarm> alarm;
    Text code{};                      // working copy of the code to translate
    cTranslate* lastSet = nullptr;    // the last translation walked
    cTranslate* objectSet = nullptr;  // the translation of the matching object
    cIDCode* object = nullptr;        // the matching object
    bool isParked = false;            // may be a reset of an alarm that has not arrived yet
    bool isInService = false;
    bool isTrial = false;  // nothing of it is kept

    bool IsFound() const { return object != nullptr; }
    bool IsOwn() const { return EqualsNoCase(event.ProtocolType, kOwnProtocol); }
    /// On SIA and Contact ID lines a given type replaces what the blocks would say.
    bool HasGivenType() const { return event.DefaultType >= 0; }
};

}  // namespace nordkeep
