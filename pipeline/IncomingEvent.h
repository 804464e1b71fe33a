#pragma once

#include "pipeline/EventPort.h"
#include "platform/OleDate.h"
#include "platform/Text.h"
#include "runtime/Protocol.h"

namespace nordkeep {

/// The protocol tag of the system's own events, as it is stored; compared in upper case.
inline constexpr const char* kOwnProtocol = "Nordkeep";

/// One decoded event on its way in. The fields stand in the order in which every event source is described.
struct IncomingEvent {
    OleDate AlarmTime{};
    Text ProtocolType{};
    int DefaultPrio = -1;  // negative: none
    int DefaultType = -1;  // negative: none
    Text DefaultAlarmCode{};
    Text ExtraText{};
    Text Originator{};
    Text ObjectID{};
    const EventPort* PortObject = nullptr;  // none for the system's own events
    Protocol TranslationNumberToUse = Protocol::Nordkeep;
    cTranslate* SpecificTranslationToUse = nullptr;
    Text LineCardNumber{};
    bool MessageIsFollowedBySpeech = false;
    bool IsAConfirmationSMS = false;
    Text XMLDocument{};
    Text ForcedTypeCode{};
    Text SIAModifier{};  // comma-separated items
    Text RawAlarmCode{};
    Text SIABlockType{};
    Text SIAPrefixText{};
    Text SIASuffixText{};
    Text URL{};
    bool IsSignOfLife = true;  // of its object; false for what is said about a sender
};

}  // namespace nordkeep
