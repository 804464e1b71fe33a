#include "store/EventStore.h"

#include "runtime/Fields.h"
#include "store/EventLoad.h"
#include "store/EventReload.h"
#include "store/JournalReplay.h"
#include "store/RecordJson.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextRemovedByAge = 3512;
constexpr int kTextNoFreeNumber = 3520;
constexpr TextView kGeneral = "General";
constexpr TextView kNextAlarmId = "NextAlarmId";
constexpr int kMostDigits = 9;
constexpr int kTrimmedWithEach = 2;
constexpr int kMostMsOfSlice = 8;

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

EventStore::~EventStore() = default;

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
    event == NetworkEvent::NewEvent ? files_.WriteNew(alarm) : files_.Write(alarm);
}

void EventStore::RemoveAlarm(cAlarm& alarm) {
    files_.ArchiveToFile(alarm);
    alarm.m_Status = kStatusRemoved;
    if (Update(alarm)) events_.TakeOut(events_.SequenceOf(alarm));
}

std::int64_t EventStore::AlarmNumberLimit() const {
    std::int64_t limit = 1;
    for (int i = 0; i < std::min(settings_.WidthForNumber, kMostDigits); ++i) limit *= 10;
    return limit;
}

// The file is asked each time, since a person may change the number in it. A number that could not be written
// down is not given twice all the same.
std::int32_t EventStore::GetNextAlarmId() {
    if (parts_.role == Role::Client || settings_.WidthForNumber < 0) return 0;
    const std::int32_t inFile = LeadingInt32(parts_.files.ReadMainIni(kGeneral, kNextAlarmId, "0"));
    const bool isKept = unwrittenNumber_ && unwrittenNumber_->inFile == inFile;
    const std::int64_t id = isKept ? unwrittenNumber_->next : inFile;
    const std::int64_t next = id + 1 >= AlarmNumberLimit() ? 0 : id + 1;
    unwrittenNumber_.reset();
    if (!parts_.files.WriteIni(kGeneral, kNextAlarmId, std::to_string(next)))
        unwrittenNumber_ = {inFile, next};
    return static_cast<std::int32_t>(id);
}

void EventStore::PlayJournal() {
    Journal* journal = parts_.commit.EntryJournal();
    if (!journal || !journal->IsOpen()) return;
    JournalReplay(parts_, settings_, *journal, parts_.commit.Disk()).Run();
    if (!journal->WasStoppedCleanly()) TakeUpAlarmNumber(*journal);
}

// The number in the settings file is not synchronised; behind a power cut it can be one of long ago. Numbers
// begin again at their limit, so that the nearer way round says which of the two is the older.
void EventStore::TakeUpAlarmNumber(Journal& journal) {
    const auto row = journal.Last(JournalKind::Event);
    const auto record = row ? ReadRecordJson(row->data) : std::nullopt;
    if (!record || settings_.WidthForNumber <= 0) return;
    const std::int64_t limit = AlarmNumberLimit();
    const std::int64_t next = (std::int64_t{record->m_AlarmId} + 1) % limit;
    const std::int32_t inFile = LeadingInt32(parts_.files.ReadMainIni(kGeneral, kNextAlarmId, "0"));
    const std::int64_t ahead = ((next - inFile) % limit + limit) % limit;
    if (ahead == 0 || ahead > limit / 2) return;
    if (!parts_.files.WriteIni(kGeneral, kNextAlarmId, std::to_string(next)))
        unwrittenNumber_ = {inFile, next};
}

void EventStore::EnforceAlarmLimits() {
    if (IsFarAbove(events_.TestAlarms().size(), settings_.MaxTestAlarms) ||
        IsFarAbove(events_.OrdinaryAlarms().size(), settings_.MaxAlarms))
        isTrimming_ = true;
    // Whatever comes, the list does not grow on.
    for (int i = 0; i < kTrimmedWithEach && isTrimming_; ++i) TrimOne();
}

void EventStore::PruneOldAlarms() {
    if (parts_.role != Role::Client && !prunedUpTo_) prunedUpTo_ = 0;
}

// The oldest of those that are too many, in the order of the list, without a walk over those that stay.
bool EventStore::TrimOne() {
    const bool isTest = Excess(events_.TestAlarms().size(), settings_.MaxTestAlarms) > 0;
    const bool isOrdinary = Excess(events_.OrdinaryAlarms().size(), settings_.MaxAlarms) > 0;
    isTrimming_ = isTest || isOrdinary;
    if (!isTrimming_) return false;
    const EventSequence test = isTest ? *events_.TestAlarms().begin() : SIZE_MAX;
    const EventSequence other = isOrdinary ? *events_.OrdinaryAlarms().begin() : SIZE_MAX;
    RemoveAlarm(*events_.Find(std::min(test, other)));
    return true;
}

bool EventStore::PruneOne() {
    prunedUpTo_ = events_.Next(*prunedUpTo_);
    if (*prunedUpTo_ == 0) {
        prunedUpTo_.reset();
        parts_.LogCount(kTextRemovedByAge, std::exchange(pruned_, 0), LogKind::Information);
        return false;
    }
    cAlarm& alarm = *events_.Find(*prunedUpTo_);
    if (!IsTooOld(alarm, settings_, parts_.clock.Now().Midnight())) return true;
    RemoveAlarm(alarm);
    ++pruned_;
    return true;
}

bool EventStore::UpkeepSlice() {
    if (reload_) ReloadSlice();
    return RemoveSlice() || reload_;
}

// What is removed here leaves the disk at the end of this turn.
bool EventStore::RemoveSlice() {
    removal_.Begin();
    while ((isTrimming_ || prunedUpTo_) && !removal_.IsFull()) {
        const std::size_t before = events_.Count();
        if (isTrimming_) TrimOne();
        if (prunedUpTo_) PruneOne();
        removal_.NoteDone(before - events_.Count());
    }
    const bool isMore = isTrimming_ || prunedUpTo_;
    if (!isMore) removal_.End();
    return isMore;
}

void EventStore::ReloadEvents() {
    if (parts_.role == Role::Client || reload_) return;
    // Brought by hand from an earlier version; that happens once in the life of a centre.
    if (EventLoad::HasOldFile(parts_.dataFolder)) return LoadEvents();
    reload_ = std::make_unique<EventReload>(parts_, settings_, events_, files_);
}

void EventStore::ReloadSlice() {
    if (!reload_->Slice(kMostMsOfSlice)) EndReload();
}

void EventStore::EndReload() {
    const std::size_t tooMany = Excess(events_.TestAlarms().size(), settings_.MaxTestAlarms) +
                                Excess(events_.OrdinaryAlarms().size(), settings_.MaxAlarms);
    isTrimming_ = tooMany > 0;
    std::exchange(reload_, nullptr)->Finish(tooMany);
}

void EventStore::LoadEvents() {
    if (parts_.role != Role::Client) EventLoad(parts_, settings_, events_, files_).Run();
}

}  // namespace nordkeep
