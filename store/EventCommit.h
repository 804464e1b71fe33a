#pragma once

#include "platform/DurableWrites.h"

#include <functional>
#include <utility>
#include <vector>

namespace nordkeep {

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
    /// `onFailure` gets a description of each failed write or synchronisation.
    EventCommit(std::function<void()> requestCommit, std::function<void(const Text&)> onFailure)
        : requestCommit_(std::move(requestCommit)), onFailure_(std::move(onFailure)) {}

    void Begin();
    void End(Completion completion);

    bool Write(const NativePath& path, TextView bytes, DurableWrites::Opening opening);
    /// Something of the telegram in hand could not be stored for a reason other than a failed write.
    void NoteFailure();
    /// Synchronises and runs the completions in the order of their End.
    void Commit();

 private:
    struct Waiting {
        bool isStored;
        Completion completion;
    };

    void Request();

    std::function<void()> requestCommit_;
    std::function<void(const Text&)> onFailure_;
    DurableWrites writes_{};
    std::vector<bool> openTelegrams_{};  // innermost last; true while nothing of it has failed
    std::vector<Waiting> waiting_{};
    bool isRequested_ = false;
};

}  // namespace nordkeep
