#pragma once

#include "pipeline/EventPort.h"
#include "platform/OleDate.h"
#include "platform/Text.h"

namespace nordkeep {

/// Numbers of TranslationNumberToUse at which the intake behaves in a way of its own.
enum TranslationNumber : int {
    kTranslateOwn = 0,
    kTranslateSIA = 8,
    kTranslateContactID = 12,
    kTranslateSMS = 17,
    kTranslateGoogol = 18,
    kTranslateText = 21,
    kTranslateCLID = 23,
    kTranslateSOSXMLv4 = 33,
    kTranslateVirtualReceiver = 34,
    kTranslateMultiComXML = 40
};

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
    int TranslationNumberToUse = kTranslateOwn;
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
};

}  // namespace nordkeep
