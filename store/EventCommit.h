#pragma once

#include "platform/DurableWrites.h"
#include "store/CommitTimes.h"
#include "store/Journal.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace nordkeep {

/// One change of the data folder that waits for the journal: a file to be written, deleted or appended to.
struct FileChange {
    enum class Kind { WriteNew, Write, Append, Delete };
    Kind kind = Kind::Write;
    std::int32_t number = -1;  // of an event file
    NativePath path{};
    Text bytes{};
};

/// Told by an EventCommit what became of the changes.
class CommitListener {
 public:
    virtual ~CommitListener() = default;
    /// A change could not be made. No reply has gone yet.
    virtual void ChangeFailed(const FileChange& change, const Text& reason) = 0;
    virtual void ChangeMade(const FileChange& change) = 0;
    /// No change that failed is still to be made.
    virtual bool AreAllChangesMade() const = 0;
    /// Everything that was changed so far has been synchronised, or some of it may be lost. No reply has gone
    /// yet.
    virtual void Synchronised(bool isSafe, const Text& reason) = 0;
    /// Once for each series of failures of the journal, and once at its end, with an empty reason.
    virtual void JournalFailed(const Text& reason) = 0;
    /// At the end of Commit, all replies have gone: the place for what leads to new events.
    virtual void Committed() = 0;
};

/// Makes durable what a turn of the loop has done, all of it together, and then lets replies go.
///
/// The journal comes first: one transaction, after which nothing of the turn can be lost. Then the files
/// follow, into the system's hands only, and are synchronised in idle moments. A power cut in between finds
/// each file as it was or half written, and the next start writes it from the journal. Without a journal, or
/// while it cannot be written, the files are synchronised before the replies go.
///
/// Whoever answers a sender brackets the intake of a telegram with Begin and End. What changes in between
/// belongs to that telegram, and its completion runs in Commit. The first change after a Commit asks for the
/// next one, so all telegrams of one turn of the loop share it.
class EventCommit {
 public:
    /// Told whether everything of the telegram is stored.
    using Completion = std::function<void(bool isStored)>;

    /// `requestCommit` arranges for Commit to be called at the end of the present turn of the loop. No
    /// journal: a copy that keeps none.
    EventCommit(DurableWrites& disk, std::function<void()> requestCommit, Journal* journal = nullptr)
        : disk_(disk), journal_(journal), requestCommit_(std::move(requestCommit)) {}

    /// One listener, which outlives this object or is taken away with nullptr.
    void SetListener(CommitListener* listener) { listener_ = listener; }

    /// Times are counted from now on; they outlive this object.
    void SetTimes(CommitTimes* times) { times_ = times; }

    void Begin();
    void End(Completion completion);

    /// Notes an entry for the journal of this turn; its id, 0 without a journal.
    std::int64_t Note(const JournalEntry& entry);
    /// Notes what is acknowledged and no event yet; 0 without a journal.
    std::int64_t NoteWaiting(JournalEntry entry);
    /// Notes that it is settled, together with what this turn makes of it.
    void NoteDone(std::int64_t waiting);
    std::vector<WaitingEntry> WaitingEntries() const {
        return journal_ ? journal_->Waiting() : std::vector<WaitingEntry>();
    }
    /// None on a copy that keeps no journal.
    Journal* EntryJournal() { return journal_; }
    /// The journal cannot be written at present.
    bool HasJournalFailed() const { return hasJournalFailed_; }
    DurableWrites& Disk() { return disk_; }
    /// Makes the change at the end of this turn, in the order in which they came.
    void Change(FileChange change);
    /// Asks for a Commit at the end of this turn.
    void Request();
    /// Something of the telegram in hand could not be stored for a reason other than a failed write.
    void NoteFailure();
    /// Brings the turn's changes to safety and runs the completions in the order of their End.
    void Commit();
    /// Commits until nothing is left to be: an outage that is noticed in a turn becomes an event of the next.
    void CommitAll();
    /// Synchronises some of what the last turns have written; to be called often. Nothing waits longer than
    /// half a minute, and while telegrams come only what has waited for long is done.
    void UseIdleMoment(const Clock& clock);
    /// The files of this turn are synchronised before its replies go, as during an outage.
    void SynchroniseWithThisTurn() {
        isToSynchronise_ = true;
        Request();
    }
    /// Synchronises everything, as the last thing of a clean stop.
    void SynchroniseAll();

 private:
    struct TelegramState {
        bool isWhole = true;  // while nothing of it has failed
        std::int64_t beganUs = 0;
    };
    using Telegram = std::shared_ptr<TelegramState>;
    struct Waiting {
        Telegram telegram;
        Completion completion;
    };
    struct Staged {
        FileChange change;
        Telegram telegram;
    };

    std::int64_t NowUs() const { return times_ ? times_->clock.MonotonicUs() : 0; }
    bool CommitJournal(bool hasChanges);
    void Make(const Staged& staged);
    bool MakeOne(const FileChange& change);
    void FailAll(const Text& reason);
    void TellJournal(bool isNoted);

    DurableWrites& disk_;
    Journal* journal_;
    std::function<void()> requestCommit_;
    CommitListener* listener_ = nullptr;
    CommitTimes* times_ = nullptr;
    std::vector<Telegram> openTelegrams_{};  // innermost last
    std::vector<Waiting> waiting_{};
    std::vector<Staged> staged_{};
    bool isRequested_ = false;
    bool isToSynchronise_ = false;
    bool hasJournalFailed_ = false;
    bool wasBusy_ = false;            // a turn was committed since the last idle moment
    std::int64_t waitsSinceMs_ = -1;  // for the synchronisation; -1 when nothing waits
};

}  // namespace nordkeep
