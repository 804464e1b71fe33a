#include "store/EventStore.h"

#include "runtime/Fields.h"
#include "store/EventLoad.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextRemovedByAge = 3512;
constexpr int kTextNoFreeNumber = 3520;
constexpr TextView kGeneral = "General";
constexpr TextView kNextAlarmId = "NextAlarmId";
constexpr int kMostDigits = 9;

/// Five percent above the limit; a limit below 1 is off.
bool IsFarAbove(std::size_t count, int limit) {
    return limit >= 1 && count * 100 > static_cast<std::size_t>(limit) * 105;
}

std::size_t Excess(std::size_t count, int limit) {
    const auto most = static_cast<std::size_t>(limit);
    return limit >= 1 && count > most ? count - most : 0;
}

}  // namespace

EventStore::EventStore(const StoreParts& parts, const StoreSettings& settings)
    : parts_(parts),
      settings_(settings),
      texts_(parts.dataFolder, parts.language),
      files_(parts_, settings_, texts_, events_) {}

cAlarm* EventStore::FindAlarmByKey(std::int32_t filePointer) const {
    return events_.Find(events_.FindFilePointer(filePointer));
}

cAlarm& EventStore::Append(std::unique_ptr<cAlarm> alarm) {
    cAlarm& record = *alarm;
    events_.Append(std::move(alarm), IsTestAlarm(record, settings_));
    return record;
}

cAlarm& EventStore::StoreNew(std::unique_ptr<cAlarm> alarm) {
    if (!files_.GiveNumber(*alarm)) {
        parts_.log.WriteSysLog(parts_.language.GetLanguageText(kTextNoFreeNumber), LogKind::Failure);
    }
    cAlarm& record = Append(std::move(alarm));
    UpdateIndexed(record, NetworkEvent::NewEvent);
    EnforceAlarmLimits();
    return record;
}

void EventStore::Forget(const cAlarm& alarm) {
    if (const auto taken = events_.TakeOut(events_.SequenceOf(alarm))) parts_.views.RemoveAlarmRow(*taken);
}

void EventStore::Clear() {
    events_.Clear();
}

void EventStore::Reindex(const cAlarm& alarm) {
    if (const EventSequence sequence = events_.SequenceOf(alarm))
        events_.Reindex(sequence, IsTestAlarm(alarm, settings_));
}

void EventStore::UpdateAlarmLists(cAlarm& alarm) {
    Reindex(alarm);
    parts_.views.UpdateAlarmLists(alarm);
}

bool EventStore::Update(cAlarm& alarm) {
    Reindex(alarm);
    return UpdateIndexed(alarm, NetworkEvent::OldEvent);
}

bool EventStore::UpdateIndexed(cAlarm& alarm, NetworkEvent event) {
    const bool isOwner = parts_.replica.SendAlarm(alarm, event);
    if (isOwner) UpdateToDisk(alarm, event);
    parts_.views.UpdateAlarmLists(alarm);
    return isOwner;
}

void EventStore::UpdateToDisk(cAlarm& alarm, NetworkEvent event) {
    if (alarm.m_Status == kStatusRemoved) return files_.Delete(alarm);
    files_.Write(alarm, event == NetworkEvent::NewEvent ? DurableWrites::Opening::CreateNew
                                                        : DurableWrites::Opening::Existing);
}

void EventStore::RemoveAlarm(cAlarm& alarm) {
    files_.ArchiveToFile(alarm);
    alarm.m_Status = kStatusRemoved;
    if (Update(alarm)) events_.TakeOut(events_.SequenceOf(alarm));
}

std::int32_t EventStore::GetNextAlarmId() {
    if (parts_.role == Role::Client || settings_.WidthForNumber < 0) return 0;
    std::int64_t limit = 1;
    for (int i = 0; i < std::min(settings_.WidthForNumber, kMostDigits); ++i) limit *= 10;
    const std::int32_t id = LeadingInt32(parts_.files.ReadMainIni(kGeneral, kNextAlarmId, "0"));
    const std::int64_t next = std::int64_t{id} + 1;
    parts_.files.WriteIni(kGeneral, kNextAlarmId, std::to_string(next >= limit ? 0 : next));
    return id;
}

void EventStore::EnforceAlarmLimits() {
    const std::size_t tests = events_.TestAlarms().size();
    const std::size_t ordinary = events_.OrdinaryAlarms().size();
    if (!IsFarAbove(tests, settings_.MaxTestAlarms) && !IsFarAbove(ordinary, settings_.MaxAlarms)) return;
    RemoveOldest(Excess(tests, settings_.MaxTestAlarms), Excess(ordinary, settings_.MaxAlarms));
}

// In the order of the list, but without walking over the records of a kind that stays.
void EventStore::RemoveOldest(std::size_t tests, std::size_t ordinary) {
    while (tests + ordinary > 0) {
        const EventSequence test = tests > 0 ? *events_.TestAlarms().begin() : SIZE_MAX;
        const EventSequence other = ordinary > 0 ? *events_.OrdinaryAlarms().begin() : SIZE_MAX;
        --(test < other ? tests : ordinary);
        RemoveAlarm(*events_.Find(std::min(test, other)));
    }
}

void EventStore::PruneOldAlarms() {
    if (parts_.role == Role::Client) return;
    const OleDate today = parts_.clock.Now().Midnight();
    std::size_t removed = 0;
    for (EventSequence at = events_.Next(0); at != 0; at = events_.Next(at)) {
        cAlarm& alarm = *events_.Find(at);
        if (!IsTooOld(alarm, settings_, today)) continue;
        RemoveAlarm(alarm);
        ++removed;
    }
    if (removed == 0) return;
    parts_.LogCount(kTextRemovedByAge, removed, LogKind::Information);
}

void EventStore::LoadEvents() {
    if (parts_.role != Role::Client) EventLoad(parts_, settings_, events_, files_).Run();
}

}  // namespace nordkeep
