#include "store/EventFiles.h"

#include "runtime/Json.h"
#include "store/EventFile.h"
#include "store/RecordJson.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNotStored = 3518;
constexpr int kTextStoredAgain = 3519;
constexpr int kTextJournalFailed = 3770;
constexpr int kTextJournalBack = 3771;
// A round of tries must not hold the loop: a dead disk is seen after a few, a living one takes many at once.
constexpr std::size_t kMostTries = 500;
constexpr std::size_t kMostTriesBehindAFailure = 20;

}  // namespace

EventFiles::EventFiles(const StoreParts& parts, const StoreSettings& settings, const AlarmText& texts,
                       const EventList& events)
    : parts_(parts),
      settings_(settings),
      texts_(texts),
      events_(events),
      folder_(parts.dataFolder, parts.randomSeed),
      archive_(parts.dataFolder) {
    parts_.commit.SetListener(this);
}

EventFiles::~EventFiles() {
    parts_.commit.SetListener(nullptr);
}

bool EventFiles::GiveNumber(cAlarm& alarm) {
    const std::optional<std::int32_t> number = folder_.GetFreeEventFileNumber();
    alarm.m_FilePointer = number ? *number : --lastWithoutFile_;
    return number.has_value();
}

void EventFiles::WriteNew(cAlarm& alarm) {
    if (alarm.m_FilePointer < 0) return parts_.commit.NoteFailure();
    parts_.commit.Note(EntryOf(JournalKind::Event, alarm));
    Stage(alarm, FileChange::Kind::WriteNew);
}

void EventFiles::Write(cAlarm& alarm) {
    if (alarm.m_FilePointer < 0) return parts_.commit.NoteFailure();
    parts_.commit.Note(EntryOf(JournalKind::Changed, alarm));
    Stage(alarm, FileChange::Kind::Write);
}

void EventFiles::Stage(cAlarm& alarm, FileChange::Kind kind) {
    alarm.m_IsStored = true;
    parts_.commit.Change({.kind = kind,
                          .number = alarm.m_FilePointer,
                          .path = folder_.PathOf(alarm.m_FilePointer),
                          .bytes = EventBytes(alarm, 0, settings_.SmallCommentSize)});
}

void EventFiles::Delete(const cAlarm& alarm) {
    if (alarm.m_FilePointer < 0) return;
    JournalEntry entry = EntryOf(JournalKind::Removed, alarm);
    // A start after a power cut writes the archive's line again when it has not reached the medium.
    const bool isArchived = archived_.first == alarm.m_FilePointer;
    entry.data = isArchived ? JsonObject().Add("archive", archived_.second).Take() : JsonObject().Take();
    archived_ = {-1, {}};
    parts_.commit.Note(entry);
    parts_.commit.Change({.kind = FileChange::Kind::Delete,
                          .number = alarm.m_FilePointer,
                          .path = folder_.PathOf(alarm.m_FilePointer)});
}

void EventFiles::ArchiveToFile(const cAlarm& alarm) {
    if (parts_.role == Role::Client) return;
    archived_ = {alarm.m_FilePointer, ArchiveLine(alarm, settings_, texts_)};
    parts_.commit.Change({.kind = FileChange::Kind::Append,
                          .path = archive_.Path(),
                          .bytes = archive_.TakeBacklog() + archived_.second});
}

void EventFiles::ChangeMade(const FileChange& change) {
    if (change.kind == FileChange::Kind::Append) return;
    if (unsaved_.erase(change.number) > 0) savedLate_.insert(change.number);
    if (change.kind != FileChange::Kind::Delete) {
        written_.insert(change.number);
        return;
    }
    written_.erase(change.number);
    folder_.Release(change.number);
}

void EventFiles::ChangeFailed(const FileChange& change, const Text& reason) {
    // What cannot be deleted keeps its number, and is there again at the next start.
    if (change.kind == FileChange::Kind::Delete) return void(unsaved_.erase(change.number));
    ++failures_;
    ++allFailures_;
    if (change.kind == FileChange::Kind::Append) {
        archive_.Keep(change.bytes);
        return NoteOutage("Data\\Archive.TXT");
    }
    unsaved_.insert(change.number);
    NoteOutage(reason);
}

void EventFiles::Tell(const Text& text) {
    parts_.log.WriteSysLog(text, LogKind::Failure);
    toTell_.push_back(text);
    parts_.commit.Request();
}

void EventFiles::NoteOutage(const Text& reason) {
    if (isOutage_) return;
    isOutage_ = true;
    savedLate_.clear();
    Tell(parts_.language.GetLanguageText(kTextNotStored) + reason);
}

void EventFiles::EndOutageWhenOver() {
    if (!isOutage_ || !AreAllChangesMade() || !written_.empty()) return;
    isOutage_ = false;
    parts_.LogCount(kTextStoredAgain, savedLate_.size(), LogKind::Information);
}

void EventFiles::Synchronised(bool isSafe, const Text& reason) {
    if (!isSafe) {
        unsaved_.insert(written_.begin(), written_.end());
        NoteOutage(reason);
    }
    written_.clear();
    EndOutageWhenOver();
}

void EventFiles::JournalFailed(const Text& reason) {
    if (!reason.empty()) return Tell(parts_.language.GetLanguageText(kTextJournalFailed) + reason);
    parts_.log.WriteSysLog(parts_.language.GetLanguageText(kTextJournalBack), LogKind::Information);
}

void EventFiles::Committed() {
    for (const Text& text : std::exchange(toTell_, {})) parts_.storageAlarm.RaiseStorageAlarm(text);
}

void EventFiles::RetryFailedWrites() {
    if (!isOutage_) return;
    folder_.Restore();
    if (archive_.HasBacklog()) {
        parts_.commit.Change(
            {.kind = FileChange::Kind::Append, .path = archive_.Path(), .bytes = archive_.TakeBacklog()});
    }
    // What failed in the last round says how much the next one may try.
    const std::size_t most = std::exchange(failures_, 0) > 0 ? kMostTriesBehindAFailure : kMostTries;
    for (std::size_t tries = std::min(unsaved_.size(), most); tries > 0 && !unsaved_.empty(); --tries) {
        // Each round goes on where the last one stopped, so that one bad file does not hold up the others.
        auto next = unsaved_.upper_bound(retriedLast_);
        if (next == unsaved_.end()) next = unsaved_.begin();
        retriedLast_ = *next;
        RetryWrite(retriedLast_);
    }
    parts_.commit.SynchroniseWithThisTurn();
}

// The journal has the entry already, or keeps it until it can be written.
void EventFiles::RetryWrite(std::int32_t number) {
    cAlarm* alarm = events_.Find(events_.FindFilePointer(number));
    if (alarm) return Stage(*alarm, FileChange::Kind::Write);
    parts_.commit.Change(
        {.kind = FileChange::Kind::Delete, .number = number, .path = folder_.PathOf(number)});
}

}  // namespace nordkeep
