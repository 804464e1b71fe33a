#pragma once

#include "store/Archive.h"
#include "store/EventFolder.h"
#include "store/EventList.h"
#include "store/StoreParts.h"

namespace nordkeep {

/// The event files of the records, and the archive of those that leave.
///
/// A record that cannot be written is written again by RetryFailedWrites; the first failure of such an outage
/// is logged and told, the others are only counted.
class EventFiles : private CommitListener {
 public:
    EventFiles(const StoreParts& parts, const StoreSettings& settings, const AlarmText& texts,
               const EventList& events);
    ~EventFiles() override;
    EventFiles(const EventFiles&) = delete;
    EventFiles& operator=(const EventFiles&) = delete;

    /// The files of the folder; see EventFolder.
    std::vector<EventFileName> List() { return folder_.List(); }
    const NativePath& FolderPath() { return folder_.Path(); }
    EventFileName Meet(std::int32_t number, const Text& name) { return folder_.Meet(number, name); }
    NativePath PathOf(std::int32_t number) { return folder_.PathOf(number); }
    /// Somebody has deleted the file.
    void Forget(std::int32_t number) { folder_.Release(number); }
    /// Gives a new record the number of its file. False when all are taken: the record gets a number below 0
    /// and has no file.
    bool GiveNumber(cAlarm& alarm);

    // Each of these is noted in the journal, and done with the files at the end of the turn.

    /// A record that has no file yet.
    void WriteNew(cAlarm& alarm);
    void Write(cAlarm& alarm);
    void Delete(const cAlarm& alarm);
    /// One line into Data\Archive.TXT; nothing on a client. To be called in front of Delete.
    void ArchiveToFile(const cAlarm& alarm);

    /// The record's present state is not in its file.
    bool IsUnsaved(std::int32_t number) const { return number < 0 || unsaved_.contains(number); }
    std::size_t UnsavedCount() const { return unsaved_.size(); }
    /// Changes that could not be made since the start.
    std::uint64_t FailureCount() const { return allFailures_; }
    void RetryFailedWrites();

 private:
    void ChangeFailed(const FileChange& change, const Text& reason) override;
    void ChangeMade(const FileChange& change) override;
    bool AreAllChangesMade() const override { return unsaved_.empty() && !archive_.HasBacklog(); }
    void Synchronised(bool isSafe, const Text& reason) override;
    void JournalFailed(const Text& reason) override;
    void Committed() override;

    void Stage(cAlarm& alarm, FileChange::Kind kind);
    void Tell(const Text& text);
    void NoteOutage(const Text& reason);
    void EndOutageWhenOver();
    void RetryWrite(std::int32_t number);

    const StoreParts& parts_;
    const StoreSettings& settings_;
    const AlarmText& texts_;
    const EventList& events_;
    EventFolder folder_;
    Archive archive_;
    std::unordered_set<std::int32_t> written_{};  // since the last synchronisation
    std::set<std::int32_t> unsaved_{};            // to be written again
    std::set<std::int32_t> savedLate_{};          // written again since the outage began
    std::int32_t retriedLast_ = -1;               // where the next round of tries begins
    std::int32_t lastWithoutFile_ = 0;            // records without a file count down from here
    std::size_t failures_ = 0;                    // since the last round of tries began
    std::uint64_t allFailures_ = 0;
    bool isOutage_ = false;
    std::vector<Text> toTell_{};                      // as alarms, when the replies of the turn have gone
    std::pair<std::int32_t, Text> archived_{-1, {}};  // the line of the record that leaves
};

}  // namespace nordkeep
