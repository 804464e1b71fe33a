#include "store/EventCommit.h"

namespace nordkeep {

void EventCommit::Begin() { openTelegrams_.push_back(true); }

void EventCommit::End(Completion completion) {
    const bool isStored = openTelegrams_.back();
    openTelegrams_.pop_back();
    waiting_.push_back({isStored, std::move(completion)});
    Request();
}

bool EventCommit::Write(const NativePath& path, TextView bytes, DurableWrites::Opening opening) {
    Request();
    if (writes_.Write(path, bytes, opening)) return true;
    NoteFailure();
    onFailure_(writes_.LastError());
    return false;
}

void EventCommit::NoteFailure() {
    if (!openTelegrams_.empty()) openTelegrams_.back() = false;
}

void EventCommit::Request() {
    if (isRequested_) return;
    isRequested_ = true;
    requestCommit_();
}

void EventCommit::Commit() {
    isRequested_ = false;
    const bool isSafe = writes_.Synchronise();
    // A completion can send, and so lead to the next telegram: it must find this turn's list already empty.
    const std::vector<Waiting> finished = std::exchange(waiting_, {});
    if (!isSafe) onFailure_(writes_.LastError());
    for (const Waiting& waiting : finished) waiting.completion(isSafe && waiting.isStored);
}

}  // namespace nordkeep
