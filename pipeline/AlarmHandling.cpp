#include "pipeline/AlarmHandling.h"

#include "store/EventFolder.h"

#include <memory>
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

void AlarmHandling::EndOne(cAlarm& alarm, const Doer& by, const std::optional<Text>& smallComment) {
    const cAlarm before = alarm;
    if (smallComment) alarm.m_SmallComment = *smallComment;
    alarm.m_Status = kStatusAcknowledged;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.Update(alarm);
    needs_.deeds.NoteAlarm(JournalKind::End, by, before, alarm);
    needs_.desk.AlarmEnded(alarm.m_FilePointer);
}

// Each is looked for when its turn comes: what becomes of one may take others out of the list. Whoever has
// begun it has done all of it, also when he logs out meanwhile.
void AlarmHandling::DoToEach(JournalKind kind, std::vector<std::int32_t> filePointers,
                             std::function<bool(std::size_t, cAlarm&, const Doer&)> deed,
                             std::function<void()> finish) {
    struct Run {
        Doer by;
        std::vector<std::int32_t> filePointers;
        std::size_t done = 0;
    };
    const auto run = std::make_shared<Run>(Run{Operator(), std::move(filePointers)});
    bulk_.Begin({.count = run->filePointers.size(),
                 .doOne =
                     [this, run, deed = std::move(deed)](std::size_t at) {
                         cAlarm* alarm = Find(run->filePointers[at]);
                         if (alarm && deed(at, *alarm, run->by)) ++run->done;
                     },
                 .finish =
                     [this, run, kind, finish = std::move(finish)] {
                         if (run->done > 0) needs_.deeds.Log(kind, run->by, std::to_string(run->done));
                         if (finish) finish();
                     }});
}

void AlarmHandling::End(cAlarm& alarm, const std::optional<Text>& smallComment) {
    EndOne(alarm, Operator(), smallComment);
    needs_.deeds.Log(JournalKind::End, Operator(), NameOf(alarm));
}

void AlarmHandling::EndEach(std::vector<std::int32_t> filePointers, bool isOnlyOpen, EndTold told) {
    const auto ended = std::make_shared<std::vector<EndedAlarm>>();
    DoToEach(
        JournalKind::End, std::move(filePointers),
        [this, ended, isOnlyOpen](std::size_t, cAlarm& alarm, const Doer& by) {
            const bool isOpen = IsUnacknowledged(alarm);
            if (!isOpen && isOnlyOpen) return false;
            if (isOpen) ended->push_back({alarm.m_FilePointer, alarm.m_Status, alarm.m_AckedTime});
            EndOne(alarm, by);
            return true;
        },
        [ended, told = std::move(told)] {
            if (told) told(std::move(*ended));
        });
}

void AlarmHandling::EndSeveral(std::span<const std::int32_t> filePointers, EndTold told) {
    EndEach({filePointers.begin(), filePointers.end()}, false, std::move(told));
}

void AlarmHandling::EndAll(EndTold told) {
    const EventList& events = needs_.store.Events();
    std::vector<std::int32_t> open;
    for (const EventSequence at : events.Unacknowledged()) open.push_back(events.Find(at)->m_FilePointer);
    needs_.desk.AllAlarmsEnded();
    // One that somebody else ends meanwhile is his.
    EndEach(std::move(open), true, std::move(told));
}

void AlarmHandling::Reopen(std::vector<EndedAlarm> ended) {
    std::vector<std::int32_t> filePointers;
    for (const EndedAlarm& one : ended) filePointers.push_back(one.filePointer);
    DoToEach(JournalKind::Reopen, std::move(filePointers),
             [this, ended = std::move(ended)](std::size_t at, cAlarm& alarm, const Doer& by) {
                 if (alarm.m_Status != kStatusAcknowledged) return false;
                 const cAlarm before = alarm;
                 alarm.m_Status = ended[at].status;
                 alarm.m_AckedTime = ended[at].ackedTime;
                 needs_.store.Update(alarm);
                 needs_.deeds.NoteAlarm(JournalKind::Reopen, by, before, alarm);
                 return true;
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
    DoToEach(JournalKind::Archive, {filePointers.begin(), filePointers.end()},
             [this](std::size_t, cAlarm& alarm, const Doer& by) {
                 needs_.deeds.NoteAlarm(JournalKind::Archive, by, alarm, alarm);
                 needs_.store.RemoveAlarm(alarm);
                 return true;
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
