#pragma once

#include "store/EventFiles.h"
#include "store/FittingSlice.h"

namespace nordkeep {

class EventReload;

/// All stored events: the records in memory, their files, their limits and the way out of the store.
///
/// A record that cannot be written stays in memory until it can.
class EventStore {
 public:
    EventStore(const StoreParts& parts, const StoreSettings& settings);
    ~EventStore();
    EventStore(const EventStore&) = delete;
    EventStore& operator=(const EventStore&) = delete;

    // --- The records

    const EventList& Events() const { return events_; }
    const AlarmText& Texts() const { return texts_; }
    /// The record of a row; none when the row has no record any more.
    cAlarm* FindAlarmByKey(std::int32_t filePointer) const;
    /// Adds a record at the end of the list, without a file and without a row.
    cAlarm& Append(std::unique_ptr<cAlarm> alarm);
    /// A new event: gives the record its file, tells and writes it, adds it to the list and to its view, and
    /// keeps the limits. The record stays in the store also when it could not be written.
    cAlarm& StoreNew(std::unique_ptr<cAlarm> alarm);
    /// Takes a record out of the list, with its row and without touching its file.
    void Forget(const cAlarm& alarm);
    /// Empties the list without touching files or rows.
    void Clear();

    // --- A record's change

    /// After every change of a record that is made on this copy: the indexes follow, the other copies are
    /// told, the file is written, or deleted for status -1, and the row shows the present state. False on a
    /// client, whose records are the server's.
    bool Update(cAlarm& alarm);
    /// After a change that the server has told of: the indexes follow, and the row shows it.
    void UpdateAlarmLists(cAlarm& alarm);
    /// One line into Data\Archive.TXT; nothing on a client.
    void ArchiveToFile(const cAlarm& alarm) { files_.ArchiveToFile(alarm); }
    /// Archives the record, deletes its file, and takes it out of list and view. On a client the server does
    /// all but the row; the record stays for its answer.
    void RemoveAlarm(cAlarm& alarm);

    // --- Numbers

    /// The running number of a new record, from the settings file at each call; 0 on a client.
    std::int32_t GetNextAlarmId();

    // --- Upkeep

    /// Behind a crash or a power cut: brings files, archive and alarm number to what the journal says. To be
    /// called once, in front of LoadEvents.
    void PlayJournal();
    /// Reads all event files, after those of an old Data\Events.DAT have been made; nothing on a client.
    /// For the start: the list is empty meanwhile.
    void LoadEvents();
    /// Begins to bring the list to what the event files say now; nothing on a client, or while it is done.
    void ReloadEvents();
    /// Begins to cut the list back to its limits once it is five percent above one.
    void EnforceAlarmLimits();
    /// Begins to archive and remove what is older than its days; nothing on a client.
    void PruneOldAlarms();
    /// A slice of what these three have begun, of some milliseconds. True while more is to be done.
    bool UpkeepSlice();
    /// Writes again what could not be written. To be called every few seconds; costs nothing when all is
    /// well.
    void RetryFailedWrites() { files_.RetryFailedWrites(); }
    /// Records whose present state is not in their files.
    std::size_t UnsavedCount() const { return files_.UnsavedCount(); }
    /// Changes of files that could not be made since the start.
    std::uint64_t FailureCount() const { return files_.FailureCount(); }

 private:
    void Reindex(const cAlarm& alarm);
    bool UpdateIndexed(cAlarm& alarm, NetworkEvent event);
    void UpdateToDisk(cAlarm& alarm, NetworkEvent event);
    void TakeUpAlarmNumber(Journal& journal);
    std::int64_t AlarmNumberLimit() const;
    bool TrimOne();
    bool PruneOne();
    bool RemoveSlice();
    void ReloadSlice();
    void EndReload();

    StoreParts parts_;
    const StoreSettings& settings_;
    AlarmText texts_;
    EventList events_{};
    EventFiles files_;

    struct UnwrittenNumber {
        std::int32_t inFile = 0;
        std::int64_t next = 0;
    };
    std::optional<UnwrittenNumber> unwrittenNumber_{};  // the settings file could not be written
    std::unique_ptr<EventReload> reload_;               // while it is done
    bool isTrimming_ = false;
    std::optional<EventSequence> prunedUpTo_{};  // while pruning
    std::size_t pruned_ = 0;
    FittingSlice removal_{parts_.clock, 8};
};

}  // namespace nordkeep
