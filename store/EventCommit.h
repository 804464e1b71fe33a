#pragma once

#include "platform/DurableWrites.h"

#include <functional>
#include <utility>
#include <vector>

namespace nordkeep {

/// Told by an EventCommit what became of the writes.
class CommitListener {
 public:
    virtual ~CommitListener() = default;
    /// Whether everything written since the last call is safe, and if not, the system's words for the reason.
    /// No reply has gone yet.
    virtual void Synchronised(bool isSafe, const Text& reason) = 0;
    /// At the end of Commit, all replies have gone: the place for what leads to new events.
    virtual void Committed() = 0;
};

/// Makes written event files durable, many with one synchronisation, and then lets replies go.
///
/// Whoever answers a sender brackets the intake of a telegram with Begin and End. What is written in between
/// belongs to that telegram, and its completion runs in Commit, once everything written before it is safe.
/// The first write after a Commit asks for the next one, so all telegrams of one turn of the loop share it.
class EventCommit {
 public:
    /// Told whether everything of the telegram is stored.
    using Completion = std::function<void(bool isStored)>;

    /// `requestCommit` arranges for Commit to be called at the end of the present turn of the loop.
    EventCommit(DurableWrites& disk, std::function<void()> requestCommit)
        : disk_(disk), requestCommit_(std::move(requestCommit)) {}

    /// One listener, which outlives this object or is taken away with nullptr.
    void SetListener(CommitListener* listener) { listener_ = listener; }

    void Begin();
    void End(Completion completion);

    /// False when the file could not be written; the telegram in hand then counts as not stored.
    bool Write(const NativePath& path, TextView bytes, DurableWrites::Opening opening);
    /// The system's words for the last failed write.
    const Text& LastError() const { return disk_.LastError(); }
    /// Asks for a Commit at the end of this turn.
    void Request();
    /// Something of the telegram in hand could not be stored for a reason other than a failed write.
    void NoteFailure();
    /// Synchronises and runs the completions in the order of their End.
    void Commit();

 private:
    struct Waiting {
        bool isStored;
        Completion completion;
    };

    void Synchronise();

    DurableWrites& disk_;
    std::function<void()> requestCommit_;
    CommitListener* listener_ = nullptr;
    std::vector<bool> openTelegrams_{};  // innermost last; true while nothing of it has failed
    std::vector<Waiting> waiting_{};
    bool isRequested_ = false;
};

}  // namespace nordkeep
