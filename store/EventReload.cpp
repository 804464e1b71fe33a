#include "store/EventReload.h"

#include "store/EventFile.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr EventSequence kEnd = UINT64_MAX;  // behind the last record
constexpr std::size_t kFilesForOnePercent = 500;
constexpr std::size_t kMostPercent = 99;

}  // namespace

EventReload::EventReload(const StoreParts& parts, const StoreSettings& settings, EventList& events,
                         EventFiles& files)
    : parts_(parts),
      settings_(settings),
      events_(events),
      files_(files),
      reading_(parts, settings, files),
      walk_(files.FolderPath()),
      last_(events.Last()) {
    // A folder that cannot be read says nothing about what is in it.
    if (walk_.IsOpen()) return;
    step_ = SIZE_MAX;
    reading_.NoteUnreadable("Data\\Events");
}

bool EventReload::Slice(int mostMs) {
    static constexpr Step kSteps[] = {&EventReload::TakeFile, &EventReload::LookForFile,
                                      &EventReload::PutFound};
    const std::int64_t end = parts_.clock.MonotonicMs() + mostMs;
    parts_.commit.CommitAll();  // so that the files hold what has been promised
    while (step_ < std::size(kSteps)) {
        const Step step = kSteps[step_];
        if (!(this->*step)()) ++step_;
        if (parts_.clock.MonotonicMs() >= end) break;
    }
    return step_ < std::size(kSteps);
}

void EventReload::Finish(std::size_t tooMany) {
    parts_.views.ShowLoadProgress(0);
    reading_.NoteDropped(tooMany);
    reading_.LogCounts();
}

bool EventReload::TakeFile() {
    const std::optional<Text> name = walk_.Next();
    if (!name) return false;
    const std::optional<std::int32_t> number = EventNumberOf(*name);
    if (!number) return true;
    if (++met_ % kFilesForOnePercent == 0) {
        parts_.views.ShowLoadProgress(static_cast<int>(std::min(met_ / kFilesForOnePercent, kMostPercent)));
    }
    const EventFileName file = files_.Meet(*number, *name);
    if (file.isSpare) {
        reading_.NoteUnreadable(*name);
    } else if (!files_.IsUnsaved(*number)) {
        TakeRecord(file, events_.Find(events_.FindFilePointer(*number)));
    }
    return true;
}

void EventReload::TakeRecord(const EventFileName& file, cAlarm* known) {
    const FileContent content = LoadFile(file.path);
    if (content.state == FileContent::State::Missing) return;  // has gone meanwhile
    const bool isRead = content.state == FileContent::State::Read;
    if (known && isRead && content.bytes == EventBytes(*known, 0, settings_.SmallCommentSize)) return;
    std::unique_ptr<cAlarm> alarm =
        reading_.RecordOf(file, isRead ? std::optional(content.bytes) : std::nullopt);
    if (!alarm) return;
    if (known) return Follow(*known, *alarm);
    if (!reading_.Stays(*alarm)) return;
    const std::int64_t arrivedMs = alarm->m_ArrivedTime.Milliseconds();
    found_.emplace(std::pair(arrivedMs, file.number), std::move(alarm));
}

// A file can say the same in other words: with old bytes behind the record, or a comment that was not cut.
void EventReload::Follow(cAlarm& known, const cAlarm& onDisk) {
    const auto bytesOf = [&](const cAlarm& alarm) {
        return EventBytes(alarm, 0, settings_.SmallCommentSize);
    };
    if (bytesOf(known) == bytesOf(onDisk)) return;
    ListItem* const row = known.m_ListItem;
    known = onDisk;
    known.m_ListItem = row;
    if (!reading_.Stays(known)) return Leave(known);
    events_.Reindex(events_.SequenceOf(known), IsTestAlarm(known, settings_));
    parts_.replica.SendAlarm(known, NetworkEvent::OldEvent);
    parts_.views.UpdateAlarmLists(known);
}

bool EventReload::LookForFile() {
    at_ = events_.Next(at_);
    if (at_ == 0 || at_ > last_) {
        at_ = 0;
        return false;
    }
    cAlarm& alarm = *events_.Find(at_);
    if (files_.IsUnsaved(alarm.m_FilePointer)) return true;
    const NativePath path = files_.PathOf(alarm.m_FilePointer);
    // A stamp does not tell what is missing from what cannot be looked at.
    if (StampOf(path).Exists() || LoadFile(path).state != FileContent::State::Missing) return true;
    files_.Forget(alarm.m_FilePointer);
    Leave(alarm);
    return true;
}

void EventReload::Leave(cAlarm& alarm) {
    alarm.m_Status = kStatusRemoved;
    parts_.replica.SendAlarm(alarm, NetworkEvent::OldEvent);
    parts_.views.RemoveAlarmRow(alarm);
    events_.TakeOut(events_.SequenceOf(alarm));
}

// In front of the first record that came later, as if it had been there from the begin.
bool EventReload::PutFound() {
    if (found_.empty()) return false;
    const cAlarm* const next = events_.Find(at_);
    const std::int64_t arrivedMs = found_.begin()->first.first;
    if (next ? arrivedMs < next->m_ArrivedTime.Milliseconds() : at_ == kEnd) {
        Put(std::move(found_.extract(found_.begin()).mapped()), at_);
    } else {
        at_ = events_.Next(at_);
        if (at_ == 0) at_ = kEnd;
    }
    return true;
}

void EventReload::Put(std::unique_ptr<cAlarm> alarm, EventSequence before) {
    cAlarm& record = *alarm;
    events_.InsertBefore(before, std::move(alarm), IsTestAlarm(record, settings_));
    parts_.replica.SendAlarm(record, NetworkEvent::NewEvent);
    parts_.views.UpdateAlarmLists(record);
}

}  // namespace nordkeep
