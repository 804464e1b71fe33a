#include "network/messages/ObjectMessages.h"

#include "translation/ServicePeriods.h"
#include "translation/Translate.h"

#include <algorithm>

namespace nordkeep {
namespace {

/// `idCode` stands inside the fields in message 2 and is left out (null) in message 15.
template <class Code, class Object, class Wire>
void CarryObject(Code* idCode, Object& object, Wire& wire) {
    wire.ShortString(object.aliveTestSchedule);
    wire.Flag(object.hasAliveTestFailed);
    if (idCode != nullptr) wire.ShortString(*idCode);
    wire.DateTime(object.lastIncomingEvent);
    wire.DateTime(object.nextExpiration);
    wire.ShortString(object.mapName);
    wire.Integer(object.serviceMode);
    wire.DateTime(object.serviceBegin);
    wire.DateTime(object.serviceEnd);
    wire.ShortString(object.objectName);
    wire.ShortString(object.originator);
    wire.ShortString(object.exportAlarmCode);
    wire.ShortString(object.exportProtocol);
    wire.ShortString(object.customer);
    wire.ShortString(object.resetIdCode);
    wire.ShortString(object.aliveTest2Schedule);
    wire.Flag(object.hasAliveTest2Failed);
    wire.DateTime(object.nextExpiration2);
}

template <class Type, class Wire>
void CarryType(Type& type, Wire& wire) {
    wire.ShortString(type.m_Name);
    wire.Integer(type.m_Prio);
    wire.ShortString(type.m_ResetTypeCode);
    wire.ShortString(type.m_TypeCode);
}

/// Everything but service period and expirations.
void StorePlainFields(cIDCode& object, const WireObject& wire) {
    object.m_AliveTestIntervalOrTimeStamps = wire.aliveTestSchedule;
    object.m_AliveTestIntervalHasExceeded = wire.hasAliveTestFailed;
    object.m_LastIncomingEvent = wire.lastIncomingEvent;
    object.m_MapName = wire.mapName;
    object.m_ObjectName = wire.objectName;
    object.m_Originator = wire.originator;
    object.m_RBM600ExportAlarmCode = wire.exportAlarmCode;
    object.m_RBM600ExportProtocol = wire.exportProtocol;
    object.m_Customer = wire.customer;
    object.m_ResetIdCode = wire.resetIdCode;
    object.m_AliveTest2IntervalOrTimeStamps = wire.aliveTest2Schedule;
    object.m_AliveTest2IntervalHasExceeded = wire.hasAliveTest2Failed;
}

std::unique_ptr<cIDCode> ReadMirroredObject(PayloadReader& wire) {
    WireObject carried;
    auto object = std::make_unique<cIDCode>();
    CarryObject(&object->m_IdCode, carried, wire);
    StorePlainFields(*object, carried);
    object->m_ServiceMode = carried.serviceMode;
    object->m_ServicePeriodBegin = carried.serviceBegin;
    object->m_ServicePeriodEnd = carried.serviceEnd;
    object->SetNextAliveTestExpirationTime(2, carried.nextExpiration);
    object->SetNextAliveTestExpirationTime(2, carried.nextExpiration2);
    return object;
}

}  // namespace

WireObject WireFormOf(const cIDCode& object) {
    return {.aliveTestSchedule = object.m_AliveTestIntervalOrTimeStamps,
            .hasAliveTestFailed = object.m_AliveTestIntervalHasExceeded,
            .lastIncomingEvent = object.m_LastIncomingEvent,
            .nextExpiration = object.GetNextAliveTestExpirationTime(1),
            .mapName = object.m_MapName,
            .serviceMode = object.m_ServiceMode,
            .serviceBegin = object.m_ServicePeriodBegin,
            .serviceEnd = object.m_ServicePeriodEnd,
            .objectName = object.m_ObjectName,
            .originator = object.m_Originator,
            .exportAlarmCode = object.m_RBM600ExportAlarmCode,
            .exportProtocol = object.m_RBM600ExportProtocol,
            .customer = object.m_Customer,
            .resetIdCode = object.m_ResetIdCode,
            .aliveTest2Schedule = object.m_AliveTest2IntervalOrTimeStamps,
            .hasAliveTest2Failed = object.m_AliveTest2IntervalHasExceeded,
            .nextExpiration2 = object.GetNextAliveTestExpirationTime(2)};
}

Text ObjectUpdatePayload(const cTranslate& set, const cIDCode& object) {
    PayloadWriter wire;
    wire.ShortString(set.m_FileName);
    wire.ShortString(object.m_IdCode);
    const WireObject carried = WireFormOf(object);
    CarryObject<const Text>(nullptr, carried, wire);
    return wire.Take();
}

std::optional<ObjectUpdate> ReadObjectUpdate(TextView payload) {
    PayloadReader wire(payload);
    ObjectUpdate update;
    ObjectName::Carry(update.name, wire);
    CarryObject<Text>(nullptr, update.object, wire);
    if (wire.HasRunOut()) return std::nullopt;
    return update;
}

void StoreObjectUpdate(cTranslate& set, cIDCode& object, const WireObject& update) {
    const bool areKeysChanged =
        object.m_Originator != update.originator || object.m_ResetIdCode != update.resetIdCode;
    StoreServicePeriod(set, object,
                       {.mode = update.serviceMode, .begin = update.serviceBegin, .end = update.serviceEnd});
    StorePlainFields(object, update);  // behind the period, which clears the failed states
    object.SetNextAliveTestExpirationTime(1, update.nextExpiration);
    object.SetNextAliveTestExpirationTime(2, update.nextExpiration2);
    if (areKeysChanged) set.index.Rebuild(set);
}

Text TranslationPayload(const cTranslate& set) {
    PayloadWriter wire;
    wire.ShortString(set.m_FileName);
    const std::size_t objects = std::min(set.m_IdCodes.size(), kMostCarriedRecords);
    wire.Integer(static_cast<int>(objects));
    for (std::size_t i = 0; i < objects; ++i) {
        const WireObject carried = WireFormOf(*set.m_IdCodes[i]);
        CarryObject(&std::as_const(set.m_IdCodes[i]->m_IdCode), carried, wire);
    }
    const std::size_t types = std::min(set.m_TypeCodes.size(), kMostCarriedRecords);
    wire.Integer(static_cast<int>(types));
    for (std::size_t i = 0; i < types; ++i) CarryType(set.m_TypeCodes[i], wire);
    return wire.Take();
}

// The counts may claim more than the payload holds.
void ReadTranslation(TextView payload, cTranslate& set) {
    PayloadReader wire(payload);
    wire.ShortString(set.m_FileName);
    int count = 0;
    wire.Integer(count);
    for (int i = 0; i < count && !wire.IsAtEnd(); ++i) set.m_IdCodes.push_back(ReadMirroredObject(wire));
    wire.Integer(count);
    for (int i = 0; i < count && !wire.IsAtEnd(); ++i) CarryType(set.m_TypeCodes.emplace_back(), wire);
}

}  // namespace nordkeep
