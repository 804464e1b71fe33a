#pragma once

#include "runtime/Role.h"
#include "runtime/Settings.h"
#include "runtime/SysLog.h"
#include "store/AlarmReplica.h"
#include "store/AlarmViews.h"
#include "store/Archive.h"
#include "store/EventCommit.h"
#include "store/EventFile.h"
#include "store/EventFolder.h"
#include "store/EventList.h"
#include "store/StorageAlarm.h"

namespace nordkeep {

/// What the store is built on; all of it outlives the store.
struct StoreParts {
    const FileTree& dataFolder;
    Settings& files;
    const Language& language;
    const Clock& clock;
    SysLog& log;
    EventCommit& commit;
    AlarmReplica& replica;
    AlarmViews& views;
    StorageAlarm& storageAlarm;
    Role role = Role::StandAlone;
    std::uint64_t randomSeed = 0;  // differs at every start
};

/// All stored events: the records in memory, their files, their limits and the way out of the store.
///
/// A record that cannot be written stays in memory and is written again by RetryFailedWrites; the first
/// failure of such an outage is logged and told, the others are only counted.
class EventStore : private CommitListener {
 public:
    EventStore(const StoreParts& parts, const StoreSettings& settings);
    ~EventStore() override;
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
    /// "-1", or the priority that resets the second alive test.
    bool IsTestAlarm(const cAlarm& alarm) const;

    // --- A record's change

    /// After every change of a record that is made on this copy: the indexes follow, the other copies are
    /// told, the file is written, or deleted for status -1, and the row shows the present state. False on a
    /// client, whose records are the server's.
    bool Update(cAlarm& alarm);
    /// After a change that the server has told of: the indexes follow, and the row shows it.
    void UpdateAlarmLists(cAlarm& alarm);
    /// One line into Data\Archive.TXT; nothing on a client.
    void ArchiveToFile(const cAlarm& alarm);
    /// Archives the record, deletes its file, and takes it out of list and view. On a client the server does
    /// all but the row; the record stays for its answer.
    void RemoveAlarm(cAlarm& alarm);

    // --- Numbers

    /// A number for a new event file; none when all are taken.
    std::optional<std::int32_t> GetFreeEventFileNumber() { return folder_.GetFreeEventFileNumber(); }
    /// The running number of a new record, from the settings file at each call; 0 on a client.
    std::int32_t GetNextAlarmId();

    // --- Upkeep

    /// Reads all event files, after those of an old Data\Events.DAT have been made; nothing on a client.
    void LoadEvents();
    /// Cuts the list back to its limits once it is five percent above one.
    void EnforceAlarmLimits();
    /// Archives and removes what is older than its days; nothing on a client.
    void PruneOldAlarms();
    /// Writes again what could not be written. To be called every few seconds; costs nothing when all is
    /// well.
    void RetryFailedWrites();
    /// Records whose present state is not in their files.
    std::size_t UnsavedCount() const { return unsaved_.size(); }

 private:
    friend class EventLoad;

    void Synchronised(bool isSafe, const Text& reason) override;
    void Committed() override;

    void Reindex(const cAlarm& alarm);
    bool UpdateIndexed(cAlarm& alarm, NetworkEvent event);
    void UpdateToDisk(cAlarm& alarm, NetworkEvent event);
    bool WriteToDisk(cAlarm& alarm, DurableWrites::Opening opening);
    void DeleteFromDisk(const cAlarm& alarm);
    bool IsTooOld(const cAlarm& alarm, OleDate today) const;
    void RemoveOldest(std::size_t tests, std::size_t ordinary);
    void NoteOutage(const Text& reason);
    void EndOutageWhenOver();
    bool RetryWrite(std::int32_t number);
    void LogCount(int textNumber, std::size_t count, LogKind kind, TextView behind = {});

    StoreParts parts_;
    const StoreSettings& settings_;
    AlarmText texts_;
    EventFolder folder_;
    Archive archive_;
    EventList events_{};

    std::unordered_set<std::int32_t> written_{};  // since the last synchronisation
    std::set<std::int32_t> unsaved_{};            // to be written again
    std::int32_t retriedLast_ = -1;               // where the next round of tries begins
    std::int32_t lastWithoutFile_ = 0;            // records without a file count down from here
    bool isOutage_ = false;
    bool isOutageToTell_ = false;
    Text outageText_{};
    std::size_t savedLate_ = 0;
};

}  // namespace nordkeep
