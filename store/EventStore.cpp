#include "store/EventStore.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextRemovedByAge = 3512;
constexpr int kTextNotStored = 3518;
constexpr int kTextStoredAgain = 3519;
constexpr int kTextNoFreeNumber = 3520;
constexpr TextView kGeneral = "General";
constexpr TextView kNextAlarmId = "NextAlarmId";
constexpr int kNoResetTimerPrio = 9999;
constexpr int kMostDigits = 9;
// A round of tries must not hold the loop: a dead disk is seen after a few, a living one takes many at once.
constexpr std::size_t kMostTries = 500;
constexpr std::size_t kMostFailures = 3;

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
      folder_(parts.dataFolder, parts.randomSeed),
      archive_(parts.dataFolder) {
    parts_.commit.SetListener(this);
}

EventStore::~EventStore() {
    parts_.commit.SetListener(nullptr);
}

cAlarm* EventStore::FindAlarmByKey(std::int32_t filePointer) const {
    return events_.Find(events_.FindFilePointer(filePointer));
}

bool EventStore::IsTestAlarm(const cAlarm& alarm) const {
    if (alarm.m_TranslatedPrio == "-1") return true;
    const int prio = settings_.AliveTest2ResetTimerPrio;
    return prio != kNoResetTimerPrio && LeadingNumber(alarm.m_TranslatedPrio) == prio;
}

cAlarm& EventStore::Append(std::unique_ptr<cAlarm> alarm) {
    cAlarm& record = *alarm;
    events_.Append(std::move(alarm), IsTestAlarm(record));
    return record;
}

cAlarm& EventStore::StoreNew(std::unique_ptr<cAlarm> alarm) {
    if (const std::optional<std::int32_t> number = GetFreeEventFileNumber()) {
        alarm->m_FilePointer = *number;
    } else {
        alarm->m_FilePointer = --lastWithoutFile_;
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
        events_.Reindex(sequence, IsTestAlarm(alarm));
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
    if (alarm.m_Status == kStatusRemoved) return DeleteFromDisk(alarm);
    WriteToDisk(alarm, event == NetworkEvent::NewEvent ? DurableWrites::Opening::CreateNew
                                                       : DurableWrites::Opening::Existing);
}

bool EventStore::WriteToDisk(cAlarm& alarm, DurableWrites::Opening opening) {
    const std::int32_t number = alarm.m_FilePointer;
    if (number < 0) {
        parts_.commit.NoteFailure();
        return false;
    }
    const Text bytes = EventBytes(alarm, 0, settings_.SmallCommentSize);
    if (!parts_.commit.Write(folder_.PathOf(number), bytes, opening)) {
        unsaved_.insert(number);
        NoteOutage(parts_.commit.LastError());
        return false;
    }
    alarm.m_IsStored = true;
    unsaved_.erase(number);
    written_.insert(number);
    return true;
}

void EventStore::DeleteFromDisk(const cAlarm& alarm) {
    if (alarm.m_FilePointer < 0) return;
    folder_.Remove(alarm.m_FilePointer);
    unsaved_.erase(alarm.m_FilePointer);
    written_.erase(alarm.m_FilePointer);
}

void EventStore::ArchiveToFile(const cAlarm& alarm) {
    if (parts_.role == Role::Client) return;
    if (archive_.Append(ArchiveLine(alarm, settings_, texts_))) return;
    NoteOutage("Data\\Archive.TXT");
    parts_.commit.Request();
}

void EventStore::RemoveAlarm(cAlarm& alarm) {
    ArchiveToFile(alarm);
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

bool EventStore::IsTooOld(const cAlarm& alarm, OleDate today) const {
    constexpr std::int64_t kDay = 86'400'000;
    const std::int64_t end = alarm.m_ArrivedTime.Milliseconds() + settings_.MaxAlarmDays * kDay;
    return settings_.MaxAlarmDays > 0 && end < today.Milliseconds();
}

void EventStore::PruneOldAlarms() {
    if (parts_.role == Role::Client) return;
    const OleDate today = parts_.clock.Now().Midnight();
    std::size_t removed = 0;
    for (EventSequence at = events_.Next(0); at != 0; at = events_.Next(at)) {
        cAlarm& alarm = *events_.Find(at);
        if (!IsTooOld(alarm, today)) continue;
        RemoveAlarm(alarm);
        ++removed;
    }
    if (removed == 0) return;
    LogCount(kTextRemovedByAge, removed, LogKind::Information);
}

void EventStore::NoteOutage(const Text& reason) {
    if (isOutage_) return;
    isOutage_ = true;
    isOutageToTell_ = true;
    outageText_ = parts_.language.GetLanguageText(kTextNotStored) + reason;
    savedLate_ = 0;
    parts_.log.WriteSysLog(outageText_, LogKind::Failure);
}

void EventStore::EndOutageWhenOver() {
    if (!isOutage_ || !unsaved_.empty() || !written_.empty() || archive_.HasBacklog()) return;
    isOutage_ = false;
    isOutageToTell_ = false;
    LogCount(kTextStoredAgain, savedLate_, LogKind::Information);
}

void EventStore::Synchronised(bool isSafe, const Text& reason) {
    if (!isSafe) {
        unsaved_.insert(written_.begin(), written_.end());
        NoteOutage(reason);
    }
    written_.clear();
    EndOutageWhenOver();
}

void EventStore::Committed() {
    if (std::exchange(isOutageToTell_, false)) parts_.storageAlarm.RaiseStorageAlarm(outageText_);
}

void EventStore::RetryFailedWrites() {
    if (!isOutage_) return;
    folder_.Restore();
    archive_.Flush();
    std::size_t failures = 0;
    const std::size_t tries = std::min(unsaved_.size(), kMostTries);
    for (std::size_t i = 0; i < tries && failures < kMostFailures && !unsaved_.empty(); ++i) {
        // Each round goes on where the last one stopped, so that one bad file does not hold up the others.
        auto next = unsaved_.upper_bound(retriedLast_);
        if (next == unsaved_.end()) next = unsaved_.begin();
        retriedLast_ = *next;
        if (!RetryWrite(retriedLast_)) ++failures;
    }
    EndOutageWhenOver();
}

bool EventStore::RetryWrite(std::int32_t number) {
    cAlarm* alarm = FindAlarmByKey(number);
    if (!alarm) {
        unsaved_.erase(number);
        return true;
    }
    if (!WriteToDisk(*alarm, DurableWrites::Opening::Existing)) return false;
    ++savedLate_;
    return true;
}

void EventStore::LogCount(int textNumber, std::size_t count, LogKind kind, TextView behind) {
    if (count == 0) return;
    Text line = parts_.language.GetLanguageText(textNumber) + std::to_string(count);
    parts_.log.WriteSysLog(line.append(behind), kind);
}

}  // namespace nordkeep
