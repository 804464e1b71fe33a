#include "store/EventCommit.h"

namespace nordkeep {
void EventCommit::Begin() {
    openTelegrams_.push_back(true);
}

void EventCommit::End(Completion completion) {
    const bool isStored = openTelegrams_.back();
    openTelegrams_.pop_back();
    waiting_.push_back({isStored, std::move(completion)});
    Request();
}

bool EventCommit::Write(const NativePath& path, TextView bytes, DurableWrites::Opening opening) {
    Request();
    const bool isWritten = disk_.Write(path, bytes, opening);
    if (!isWritten) NoteFailure();
    return isWritten;
}

void EventCommit::NoteFailure() {
    Request();
    if (!openTelegrams_.empty()) openTelegrams_.back() = false;
}

void EventCommit::Request() {
    if (isRequested_) return;
    isRequested_ = true;
    requestCommit_();
}

void EventCommit::Synchronise() {
    const bool isSafe = disk_.Synchronise();
    if (!isSafe) {
        // Nobody can tell which of the files are lost, nor, with a telegram in hand, which of them are its
        // own.
        for (Waiting& waiting : waiting_) waiting.isStored = false;
        openTelegrams_.assign(openTelegrams_.size(), false);
    }
    if (listener_) listener_->Synchronised(isSafe, disk_.LastError());
}

void EventCommit::Commit() {
    isRequested_ = false;
    Synchronise();
    // A completion can send, and so lead to the next telegram: it must find this turn's list already empty.
    const std::vector<Waiting> finished = std::exchange(waiting_, {});
    for (const Waiting& waiting : finished) waiting.completion(waiting.isStored);
    if (listener_) listener_->Committed();
}

}  // namespace nordkeep
