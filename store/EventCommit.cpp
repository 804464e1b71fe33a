#include "store/EventCommit.h"

namespace nordkeep {
namespace {

// Each unsynchronised file is held open, and a process may hold about a thousand.
constexpr std::size_t kMostOpenFiles = 200;

}  // namespace

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
  if (!writes_.Write(path, bytes, opening)) {
    NoteFailure();
    return false;
  }
  if (++openFiles_ >= kMostOpenFiles) Synchronise();
  return true;
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
  openFiles_ = 0;
  const bool isSafe = writes_.Synchronise();
  if (!isSafe) {
    // Nobody can tell which of the files are lost, nor, with a telegram in hand, which of them are its own.
    for (Waiting& waiting : waiting_) waiting.isStored = false;
    openTelegrams_.assign(openTelegrams_.size(), false);
  }
  if (listener_) listener_->Synchronised(isSafe, writes_.LastError());
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
