#include "pipeline/Intake.h"
#include "runtime/Fields.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kNoSuchPriority = 9999;

Text RestoreTypeOf(const EventPort& port, Protocol protocol) {
    if (protocol == Protocol::SIA) return port.m_CLIdTranslatedSIAAliveTestTypeReset;
    if (protocol == Protocol::ContactID) return port.m_CLIdTranslatedContactIDAliveTestTypeReset;
    return port.m_CLIdTranslatedDefaultAliveTestTypeReset;
}

// An event without a port is the system's own about the object, not a sign of life of it.
bool IsSignOfLife(const IncomingEvent& event) {
    return event.PortObject && event.IsSignOfLife;
}

}  // namespace

void Intake::NoteObjectHeard(IntakeRun& run, cTranslate& set, cIDCode& object) {
    object.m_LastIncomingEvent = needs_.clock.Now();
    const Text ownType = std::to_string(needs_.translationSettings.AliveTest2Type);
    if (!IsSignOfLife(run.event) || !object.m_AliveTestIntervalHasExceeded ||
        run.alarm->m_TypeCode == ownType)
        return;
    // Cleared first, so that the restore does not raise another.
    object.m_AliveTestIntervalHasExceeded = false;
    RaiseRestore(run, set, object);
}

void Intake::RaiseRestore(IntakeRun& run, cTranslate& set, cIDCode& object) {
    const IncomingEvent& event = run.event;
    const Protocol protocol = event.TranslationNumberToUse;
    const Text type = RestoreTypeOf(*event.PortObject, protocol);
    if (protocol != Protocol::SIA && protocol != Protocol::ContactID) {
        return RaiseSyntheticRestore(run, set, object, type);
    }
    HandleIncomingEvent({.AlarmTime = needs_.clock.Now(),
                         .ProtocolType = event.ProtocolType,
                         .DefaultType = LeadingInt16(type),
                         .DefaultAlarmCode = event.DefaultAlarmCode,
                         .ExtraText = event.ExtraText,
                         .Originator = event.Originator,
                         .ObjectID = event.ObjectID,
                         .PortObject = event.PortObject,
                         .TranslationNumberToUse = protocol,
                         .SpecificTranslationToUse = event.SpecificTranslationToUse,
                         .LineCardNumber = event.LineCardNumber,
                         .ForcedTypeCode = type});
}

void Intake::RaiseSyntheticRestore(const IntakeRun& run, cTranslate& set, const cIDCode& object,
                                   const Text& type) {
    HandleIncomingEvent({.AlarmTime = run.event.AlarmTime,
                         .ProtocolType = run.event.ProtocolType,
                         .DefaultType = LeadingInt16(type),
                         .DefaultAlarmCode = SyntheticTelegram(set, object.m_IdCode, type),
                         .Originator = run.event.Originator,
                         .ObjectID = run.event.ObjectID,
                         .SpecificTranslationToUse = &set,
                         .ForcedTypeCode = type});
}

void Intake::FeedAliveTests(IntakeRun& run) {
    if (!run.IsFound() || !IsSignOfLife(run.event)) return;
    const int feeding = needs_.translationSettings.AliveTest2ResetTimerPrio;
    const bool feedsTest2 = feeding != kNoSuchPriority &&
                            LeadingNumber(run.alarm->m_TranslatedPrio) == feeding &&
                            run.object->AliveTestIsToBeUsed(2);
    if (feedsTest2) {
        FeedTest2(run);
    } else if (run.object->AliveTestIsToBeUsed(1)) {
        needs_.timers.Restart(*run.object, 1, run.object->m_LastIncomingEvent, kChangedByIncomingEvent);
    } else {
        return;
    }
    ShowObject(*run.objectSet, *run.object);
}

void Intake::FeedTest2(IntakeRun& run) {
    cIDCode& object = *run.object;
    needs_.timers.Restart(object, 2, object.m_LastIncomingEvent, kChangedByIncomingEvent);
    if (!std::exchange(object.m_AliveTest2IntervalHasExceeded, false)) {
        // A routine test is no alarm; one that ends a failure is shown.
        run.alarm->m_Status = kStatusAcknowledged;
        return;
    }
    const Text type = std::to_string(needs_.translationSettings.AliveTest2TypeReset);
    RaiseSyntheticRestore(run, *run.lastSet, object, type);
}

void Intake::RaiseSilenceAlarm(cTranslate& set, cIDCode& object, int test, OleDate now) {
    const int typeNumber = needs_.translationSettings.TypeOf(test);
    const Text type = std::to_string(typeNumber);
    HandleIncomingEvent({.AlarmTime = now,
                         .ProtocolType = kOwnProtocol,
                         .DefaultType = typeNumber,
                         .DefaultAlarmCode = SyntheticTelegram(set, object.m_IdCode, type),
                         // An object that demands its number must be found by its own alarm.
                         .Originator = needs_.lookup.matchCallers ? object.m_Originator : Text(),
                         .ObjectID = object.m_IdCode,
                         .SpecificTranslationToUse = &set,
                         .ForcedTypeCode = type});
}

}  // namespace nordkeep
