#include "store/EventFiles.h"

#include "store/EventFile.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNotStored = 3518;
constexpr int kTextStoredAgain = 3519;
// A round of tries must not hold the loop: a dead disk is seen after a few, a living one takes many at once.
constexpr std::size_t kMostTries = 500;
constexpr std::size_t kMostFailures = 3;

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

bool EventFiles::Write(cAlarm& alarm, DurableWrites::Opening opening) {
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

void EventFiles::Delete(const cAlarm& alarm) {
    if (alarm.m_FilePointer < 0) return;
    folder_.Remove(alarm.m_FilePointer);
    unsaved_.erase(alarm.m_FilePointer);
    written_.erase(alarm.m_FilePointer);
}

void EventFiles::ArchiveToFile(const cAlarm& alarm) {
    if (parts_.role == Role::Client) return;
    if (archive_.Append(ArchiveLine(alarm, settings_, texts_))) return;
    NoteOutage("Data\\Archive.TXT");
    parts_.commit.Request();
}

void EventFiles::NoteOutage(const Text& reason) {
    if (isOutage_) return;
    isOutage_ = true;
    isOutageToTell_ = true;
    outageText_ = parts_.language.GetLanguageText(kTextNotStored) + reason;
    savedLate_ = 0;
    parts_.log.WriteSysLog(outageText_, LogKind::Failure);
}

void EventFiles::EndOutageWhenOver() {
    if (!isOutage_ || !unsaved_.empty() || !written_.empty() || archive_.HasBacklog()) return;
    isOutage_ = false;
    isOutageToTell_ = false;
    parts_.LogCount(kTextStoredAgain, savedLate_, LogKind::Information);
}

void EventFiles::Synchronised(bool isSafe, const Text& reason) {
    if (!isSafe) {
        unsaved_.insert(written_.begin(), written_.end());
        NoteOutage(reason);
    }
    written_.clear();
    EndOutageWhenOver();
}

void EventFiles::Committed() {
    if (std::exchange(isOutageToTell_, false)) parts_.storageAlarm.RaiseStorageAlarm(outageText_);
}

void EventFiles::RetryFailedWrites() {
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

bool EventFiles::RetryWrite(std::int32_t number) {
    cAlarm* alarm = events_.Find(events_.FindFilePointer(number));
    if (!alarm) {
        unsaved_.erase(number);
        return true;
    }
    if (!Write(*alarm, DurableWrites::Opening::Existing)) return false;
    ++savedLate_;
    return true;
}

}  // namespace nordkeep
