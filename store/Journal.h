#pragma once

#include "platform/Clock.h"
#include "platform/FileTree.h"
#include "platform/JournalFile.h"

#include <deque>
#include <map>

namespace nordkeep {

/// What an entry tells. The first three are what became of a record; a waiting entry holds what is
/// acknowledged and not yet an event, and stays open until its done entry; the others are deeds.
enum class JournalKind {
    Event,
    Changed,
    Removed,
    Waiting,
    Done,
    Comment,
    End,
    Archive,
    Service,
    AliveTest,
    Edit,
    Login,
    Logout,
    Refused,
    Send,
    Silence,
    Reopen,
    Handover,
};
/// The word of a kind in the database, such as "alivetest".
const char* NameOf(JournalKind kind);

/// One entry to be noted. Texts are the system's own; `data` is a JSON object in UTF-8.
struct JournalEntry {
    JournalKind kind = JournalKind::Event;
    Text event{};
    std::optional<int> status{};
    Text priority{};
    Text object{};
    Text type{};
    Text port{};
    Text user{};
    Text station{};
    Text text{};
    std::string data{};
};

/// Something acknowledged that is no event yet.
struct WaitingEntry {
    std::int64_t id = 0;
    std::string data{};
};

/// Everything that the system promises, in order, before it promises it: one transaction a turn of the loop.
///
/// While the database cannot be written the entries gather, up to a limit, and event files have to be
/// synchronised one by one. A small file then says from which entry on the files are newer than the journal,
/// so that a start after a crash does not put older states over them.
class Journal {
 public:
    Journal(JournalFile& file, const FileTree& dataFolder, const Clock& clock)
        : file_(file), dataFolder_(dataFolder), clock_(clock) {}

    /// Opens the database or makes one. False, with LastError, when it cannot be used now; a later Commit
    /// tries again, as behind every failure not more than once a second.
    bool Open();
    bool IsOpen() const { return file_.IsOpen(); }
    /// It is open, and the last transaction was written.
    bool IsWorking() const { return IsOpen() && !hasFailed_; }
    const Text& LastError() const { return lastError_; }

    /// Adds an entry to this turn's transaction. Its id, which no other entry has.
    std::int64_t Note(const JournalEntry& entry);
    /// Notes what is acknowledged and has yet to become an event.
    std::int64_t NoteWaiting(JournalEntry entry);
    /// Notes, in the transaction of what came of it, that a waiting entry is settled; 0 is none.
    void NoteDone(std::int64_t waiting);
    /// What was waiting when the journal was opened and is not settled yet.
    std::vector<WaitingEntry> Waiting() const;

    bool HasStaged() const { return !staged_.empty(); }
    /// The id of the newest entry noted.
    std::int64_t LastId() const { return nextId_ - 1; }
    /// Writes this turn's transaction. False when the entries could not be written.
    bool Commit();
    /// To be called when Commit has failed, before anything is promised on the strength of the files alone:
    /// from now on these are newer than the journal. False when that cannot be kept in mind.
    bool NoteFilesAreNewer();

    /// The files hold everything up to this entry, on the medium.
    void NoteFilesSafe(std::int64_t upTo);
    /// The entries behind this one have to be played onto the files.
    std::int64_t FilesSafeUpTo() const;
    /// The newest entry at the last clean stop; 0 when there was none.
    std::int64_t CleanStopId() const { return cleanId_; }
    /// The last stop was a clean one.
    bool WasStoppedCleanly() const { return wasClean_; }
    /// The last thing of a clean stop. False when it could not be written.
    bool NoteCleanStop();

    /// Shows the entries of these kinds behind an id, in order; false when not all could be read.
    bool Read(std::int64_t after, std::span<const JournalKind> kinds,
              const std::function<void(const JournalRow&)>& show);
    /// Shows up to `most` entries of all kinds behind an id, in order; false when they could not be read.
    bool ReadSome(std::int64_t after, std::size_t most, const std::function<void(const JournalRow&)>& show);
    /// Shows a part of a stretch, or of what is known of one thing; false when it could not be read.
    bool ReadStretch(const JournalStretch& stretch, const std::function<void(const JournalRow&)>& show) {
        return file_.IsOpen() && file_.ReadStretch(stretch, show);
    }
    bool ReadSubject(const JournalSubject& subject, const std::function<void(const JournalRow&)>& show) {
        return file_.IsOpen() && file_.ReadSubject(subject, show);
    }
    /// The newest entry of an event's file pointer, of any kind without one.
    std::optional<JournalRow> LastOf(const Text& event, std::optional<JournalKind> kind);
    /// The newest entry of a kind that stands in the database.
    std::optional<JournalRow> Last(JournalKind kind) { return file_.ReadLast(NameOf(kind)); }
    /// A number that is kept beside the entries under a name of its own; 0 for one that never was.
    std::int64_t Mark(const char* name) const { return file_.IsOpen() ? file_.Mark(name) : 0; }
    /// On the medium when it returns true.
    bool KeepMark(const JournalMark& mark) { return file_.IsOpen() && file_.Append({}, {&mark, 1}); }
    /// Deletes a slice of what is older than `days`; 0 keeps everything. True when there may be more.
    bool Prune(int days);
    /// Work for an idle moment, and now and then for a busy program, too.
    bool Tidy(bool isBusy) { return file_.Tidy(isBusy); }

 private:
    JournalRow RowOf(const JournalEntry& entry);
    bool Fail();
    void ReadMarks();
    bool ReadWaiting();
    bool AppendStaged();
    std::int64_t OldestWaiting() const;

    JournalFile& file_;
    const FileTree& dataFolder_;
    const Clock& clock_;
    std::vector<JournalRow> staged_{};
    std::map<std::int64_t, std::string> waiting_{};
    std::int64_t nextId_ = 1;
    std::int64_t committedId_ = 0;
    std::int64_t filesSafe_ = 0;        // as it stands in the database
    std::int64_t filesSafeToNote_ = 0;  // to be written with the next transaction
    std::int64_t newerFrom_ = -1;       // as it stands in the small file; -1 when not known
    std::int64_t triedAtMs_ = 0;
    std::int64_t cleanId_ = 0;
    bool hasFailed_ = false;  // the last try to write
    bool wasClean_ = false;
    Text lastError_{};
};

/// "2026-11-21T20:15:30.123Z" of milliseconds since 1970.
std::string UtcStamp(std::int64_t ms);

}  // namespace nordkeep
