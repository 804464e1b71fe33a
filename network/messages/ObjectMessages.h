#pragma once

#include "network/messages/Messages.h"

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// The wire form of an object's record without its ID code.
struct WireObject {
    Text aliveTestSchedule{};
    bool hasAliveTestFailed = false;
    OleDate lastIncomingEvent{};
    OleDate nextExpiration{};
    Text mapName{};
    int serviceMode = 0;
    OleDate serviceBegin{};
    OleDate serviceEnd{};
    Text objectName{};
    Text originator{};
    Text exportAlarmCode{};
    Text exportProtocol{};
    Text customer{};
    Text resetIdCode{};
    Text aliveTest2Schedule{};
    bool hasAliveTest2Failed = false;
    OleDate nextExpiration2{};
};
WireObject WireFormOf(const cIDCode& object);

/// Message 15.
struct ObjectUpdate {
    ObjectName name{};
    WireObject object{};
};
Text ObjectUpdatePayload(const cTranslate& set, const cIDCode& object);
/// None when the payload ends before its last field.
std::optional<ObjectUpdate> ReadObjectUpdate(TextView payload);
/// Stores an update in an object of the mirror and keeps the set's index right. A service mode that is none
/// leaves the service period as it is.
void StoreObjectUpdate(cTranslate& set, cIDCode& object, const WireObject& update);

/// What a set has in message 2, whose numbers are 16 bits wide, of objects and of types.
inline constexpr std::size_t kMostCarriedRecords = 32767;
/// Message 2: one set. What goes beyond kMostCarriedRecords stays at home.
Text TranslationPayload(const cTranslate& set);
/// Fills an empty set of the mirror. Both expirations end in the place of the second alive test, where those
/// who read the mirror expect them; message 15 sets them apart.
void ReadTranslation(TextView payload, cTranslate& set);

}  // namespace nordkeep
