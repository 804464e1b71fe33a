#include "pipeline/AlarmHandling.h"

#include "store/EventFolder.h"

#include <utility>

namespace nordkeep {
namespace {

/// An alarm as the log names it.
Text NameOf(const cAlarm& alarm) {
    const Text& object = alarm.m_TranslatedIDCode.empty() ? alarm.m_IdCode : alarm.m_TranslatedIDCode;
    return EventPointerOf(alarm.m_FilePointer) + " " + object + " " + alarm.m_TranslatedTypeCode;
}

/// What somebody has done who made the one record of the other.
JournalKind DeedOf(const cAlarm& before, const cAlarm& after) {
    if (after.m_Status == kStatusRemoved) return JournalKind::Archive;
    const bool isReopened = before.m_Status == kStatusAcknowledged && IsUnacknowledged(after);
    if (isReopened) return JournalKind::Reopen;
    const bool isEnded = after.m_Status == kStatusAcknowledged && before.m_Status != kStatusAcknowledged;
    return isEnded ? JournalKind::End : JournalKind::Comment;
}

}  // namespace

cAlarm* AlarmHandling::Find(std::int32_t filePointer) const {
    cAlarm* alarm = needs_.store.FindAlarmByKey(filePointer);
    return alarm && alarm->m_Status != kStatusRemoved ? alarm : nullptr;
}

void AlarmHandling::EndOne(cAlarm& alarm, const std::optional<Text>& smallComment) {
    const cAlarm before = alarm;
    if (smallComment) alarm.m_SmallComment = *smallComment;
    alarm.m_Status = kStatusAcknowledged;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.Update(alarm);
    needs_.deeds.NoteAlarm(JournalKind::End, Operator(), before, alarm);
    needs_.desk.AlarmEnded(alarm.m_FilePointer);
}

// Each is looked for when its turn comes: what becomes of one may take others out of the list.
template <class Keys, class Finder, class Deed>
std::size_t AlarmHandling::DoToEach(JournalKind kind, const Keys& keys, Finder find, Deed deed) {
    std::size_t count = 0;
    for (const auto key : keys) {
        cAlarm* alarm = find(key);
        if (!alarm) continue;
        deed(*alarm);
        ++count;
    }
    if (count > 0) needs_.deeds.Log(kind, Operator(), std::to_string(count));
    return count;
}

void AlarmHandling::End(cAlarm& alarm, const std::optional<Text>& smallComment) {
    EndOne(alarm, smallComment);
    needs_.deeds.Log(JournalKind::End, Operator(), NameOf(alarm));
}

void AlarmHandling::EndNoted(cAlarm& alarm, std::vector<EndedAlarm>& ended) {
    if (IsUnacknowledged(alarm)) ended.push_back({alarm.m_FilePointer, alarm.m_Status, alarm.m_AckedTime});
    EndOne(alarm);
}

std::vector<EndedAlarm> AlarmHandling::EndSeveral(std::span<const std::int32_t> filePointers) {
    std::vector<EndedAlarm> ended;
    DoToEach(
        JournalKind::End, filePointers, [this](std::int32_t key) { return Find(key); },
        [&](cAlarm& alarm) { EndNoted(alarm, ended); });
    return ended;
}

std::vector<EndedAlarm> AlarmHandling::EndAll() {
    std::vector<EndedAlarm> ended;
    const EventList& events = needs_.store.Events();
    // A copy, since an alarm that ends leaves the set.
    const std::set<EventSequence> open = events.Unacknowledged();
    needs_.views.BeginBulkLoad();
    DoToEach(
        JournalKind::End, open, [&](EventSequence key) { return events.Find(key); },
        [&](cAlarm& alarm) { EndNoted(alarm, ended); });
    needs_.views.EndBulkLoad();
    needs_.desk.AllAlarmsEnded();
    return ended;
}

std::size_t AlarmHandling::Reopen(std::span<const EndedAlarm> ended) {
    std::vector<const EndedAlarm*> keys;
    for (const EndedAlarm& one : ended) keys.push_back(&one);
    const EndedAlarm* inHand = nullptr;
    const auto find = [&](const EndedAlarm* one) {
        inHand = one;
        cAlarm* alarm = Find(one->filePointer);
        return alarm && alarm->m_Status == kStatusAcknowledged ? alarm : nullptr;
    };
    return DoToEach(JournalKind::Reopen, keys, find, [&](cAlarm& alarm) {
        const cAlarm before = alarm;
        alarm.m_Status = inHand->status;
        alarm.m_AckedTime = inHand->ackedTime;
        needs_.store.Update(alarm);
        needs_.deeds.NoteAlarm(JournalKind::Reopen, Operator(), before, alarm);
    });
}

void AlarmHandling::Comment(cAlarm& alarm, const std::optional<Text>& smallComment) {
    const cAlarm before = alarm;
    if (alarm.m_Status == kStatusNew) alarm.m_Status = kStatusCommented;
    if (alarm.m_Status == kStatusNewWaiting) alarm.m_Status = kStatusCommentedWaiting;
    if (smallComment) alarm.m_SmallComment = *smallComment;
    needs_.store.Update(alarm);
    needs_.deeds.NoteAlarm(JournalKind::Comment, Operator(), before, alarm);
    needs_.deeds.Log(JournalKind::Comment, Operator(), NameOf(alarm));
}

void AlarmHandling::TakeSmallComment(cAlarm& alarm, const Text& smallComment) {
    const cAlarm before = alarm;
    alarm.m_SmallComment = smallComment;
    needs_.store.Update(alarm);
    needs_.deeds.NoteAlarm(JournalKind::Comment, Operator(), before, alarm);
    needs_.deeds.Log(JournalKind::Comment, Operator(), NameOf(alarm));
}

void AlarmHandling::Archive(std::span<const std::int32_t> filePointers) {
    DoToEach(
        JournalKind::Archive, filePointers, [this](std::int32_t key) { return Find(key); },
        [this](cAlarm& alarm) {
            needs_.deeds.NoteAlarm(JournalKind::Archive, Operator(), alarm, alarm);
            needs_.store.RemoveAlarm(alarm);
        });
}

void AlarmHandling::EndByReset(cAlarm& alarm, AlarmStatus status) {
    alarm.m_Status = status;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.Update(alarm);
}

cAlarm AlarmHandling::TakeOver(cAlarm& alarm, cAlarm changed, const Doer& by) {
    const cAlarm before = std::move(alarm);
    alarm = std::move(changed);
    const JournalKind kind = DeedOf(before, alarm);
    needs_.deeds.NoteAlarm(kind, by, before, alarm);
    needs_.deeds.Log(kind, by, NameOf(alarm));
    // The archive's line in front of the file's end: what is removed is noted with it.
    if (alarm.m_Status == kStatusRemoved) needs_.store.ArchiveToFile(alarm);
    needs_.store.Update(alarm);
    cAlarm left = alarm;
    if (alarm.m_Status == kStatusRemoved) needs_.store.Forget(alarm);
    return left;
}

}  // namespace nordkeep
