#include "network/messages/EventRecord.h"

#include "network/messages/Payload.h"
#include "store/Alarm.h"

namespace nordkeep {
namespace {

/// The fields in the order of the wire, which is neither that of the class nor that of the event file.
template <class Alarm, class Wire>
void CarryEvent(Alarm& alarm, Wire& wire) {
    wire.Long(alarm.m_FilePointer);
    wire.Flag(alarm.m_IsStored);
    wire.Integer(alarm.m_Status);
    wire.Integer(alarm.m_Repeated);
    wire.Integer(alarm.m_SentToTorvex);
    wire.DateTime(alarm.m_TimeStamp);
    wire.DateTime(alarm.m_AckedTime);
    wire.DateTime(alarm.m_ArrivedTime);
    wire.ShortString(alarm.m_AlarmCodeToStore);
    wire.ShortString(alarm.m_AlarmCode);
    wire.ShortString(alarm.m_ExtraText);
    wire.ShortString(alarm.m_ProtocolType);
    wire.ShortString(alarm.m_TranslatedPrio);
    wire.ShortString(alarm.m_TranslatedTypeCode);
    wire.ShortString(alarm.m_TranslatedIDCode);
    wire.ShortString(alarm.m_TranslatedMapName);
    wire.ShortString(alarm.m_TranslationFile);
    wire.ShortString(alarm.m_ResetTypeCode);
    wire.ShortString(alarm.m_Prio);
    wire.ShortString(alarm.m_TypeCode);
    wire.ShortString(alarm.m_IdCode);
    wire.ShortString(alarm.m_SIAStatus);
    wire.ShortString(alarm.m_SIAAddress);
    wire.ShortString(alarm.m_SIAModifier);
    wire.ShortString(alarm.m_SmallComment);
    wire.ShortString(alarm.m_Originator);
    wire.ShortString(alarm.m_User);
    wire.ShortString(alarm.m_PortDescription);
    wire.ShortString(alarm.m_Customer);
    wire.ShortString(alarm.m_LineCardNumber);
    wire.Long(alarm.m_AlarmId);
    wire.ShortString(alarm.m_ResetIdCode);
    wire.ShortString(alarm.m_ObjectInformation);
    wire.ShortString(alarm.m_RawAlarmCode);
}

}  // namespace

Text EventPayload(const cAlarm& alarm) {
    PayloadWriter wire;
    CarryEvent(alarm, wire);
    return wire.Take();
}

bool ReadEvent(TextView payload, cAlarm& alarm) {
    PayloadReader wire(payload);
    CarryEvent(alarm, wire);
    return !wire.HasRunOut();
}

EventHead ReadEventHead(TextView payload) {
    EventHead head;
    PayloadReader wire(payload);
    wire.Long(head.filePointer);
    wire.Integer(head.isStored);
    wire.Integer(head.status);
    return head;
}

}  // namespace nordkeep
