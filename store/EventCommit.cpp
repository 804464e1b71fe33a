#include "store/EventCommit.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::size_t kAll = SIZE_MAX;
constexpr std::size_t kFilesAtOnce = 8;
constexpr int kMostMsAtOnce = 10;
/// Turns that may follow from one; each outage is told once.
constexpr int kMostFollowing = 3;
/// Files that have waited for so long are synchronised also while telegrams come.
constexpr int kOverdueMs = 15'000;

}  // namespace

void EventCommit::Begin() {
    openTelegrams_.push_back(std::make_shared<TelegramState>(TelegramState{.beganUs = NowUs()}));
}

void EventCommit::End(Completion completion) {
    waiting_.push_back({std::move(openTelegrams_.back()), std::move(completion)});
    openTelegrams_.pop_back();
    Request();
}

std::int64_t EventCommit::Note(const JournalEntry& entry) {
    if (!journal_) return 0;
    Request();
    return journal_->Note(entry);
}

std::int64_t EventCommit::NoteWaiting(JournalEntry entry) {
    if (!journal_) return 0;
    Request();
    return journal_->NoteWaiting(std::move(entry));
}

void EventCommit::NoteDone(std::int64_t waiting) {
    if (!journal_ || waiting == 0) return;
    Request();
    journal_->NoteDone(waiting);
}

void EventCommit::Change(FileChange change) {
    Request();
    const auto isSame = [&](const Staged& staged) {
        return staged.change.kind == FileChange::Kind::Append && staged.change.path == change.path;
    };
    if (change.kind == FileChange::Kind::Append) {
        const auto same = std::ranges::find_if(staged_, isSame);
        if (same != staged_.end()) return void(same->change.bytes += change.bytes);
    }
    staged_.push_back({std::move(change), openTelegrams_.empty() ? nullptr : openTelegrams_.back()});
}

void EventCommit::NoteFailure() {
    Request();
    if (!openTelegrams_.empty()) openTelegrams_.back()->isWhole = false;
}

void EventCommit::Request() {
    if (isRequested_) return;
    isRequested_ = true;
    requestCommit_();
}

bool EventCommit::MakeOne(const FileChange& change) {
    using Opening = DurableWrites::Opening;
    switch (change.kind) {
        case FileChange::Kind::WriteNew:
            return disk_.Write(change.path, change.bytes, Opening::CreateNew);
        case FileChange::Kind::Write:
            return disk_.Write(change.path, change.bytes, Opening::Existing);
        case FileChange::Kind::Append:
            return disk_.Append(change.path, change.bytes);
        case FileChange::Kind::Delete:
            return disk_.Remove(change.path);
    }
    return false;
}

void EventCommit::Make(const Staged& staged) {
    if (MakeOne(staged.change)) {
        if (listener_) listener_->ChangeMade(staged.change);
        return;
    }
    // A line of the archive tells of a record that leaves; it is kept and does not concern who sends now.
    if (staged.telegram && staged.change.kind != FileChange::Kind::Append) staged.telegram->isWhole = false;
    if (listener_) listener_->ChangeFailed(staged.change, disk_.LastError());
}

// Nobody can tell which of the files are lost, nor, with a telegram in hand, which of them are its own.
void EventCommit::FailAll(const Text& reason) {
    for (const Waiting& waiting : waiting_) waiting.telegram->isWhole = false;
    for (const Telegram& telegram : openTelegrams_) telegram->isWhole = false;
    if (listener_) listener_->Synchronised(false, reason);
}

void EventCommit::TellJournal(bool isNoted) {
    if (hasJournalFailed_ == !isNoted) return;
    hasJournalFailed_ = !isNoted;
    if (listener_) listener_->JournalFailed(isNoted ? Text() : journal_->LastError());
}

// True when the journal holds everything of this turn.
bool EventCommit::CommitJournal(bool hasChanges) {
    if (!journal_) return false;
    const bool isNoted = journal_->Commit();
    TellJournal(isNoted);
    // What the files hold from now on the journal does not know; without a note of that nothing may be
    // promised.
    if (!isNoted && hasChanges && !journal_->NoteFilesAreNewer()) FailAll(journal_->LastError());
    return isNoted;
}

void EventCommit::Commit() {
    isRequested_ = false;
    wasBusy_ = true;
    const std::int64_t beganUs = NowUs();
    const std::vector<Staged> changes = std::exchange(staged_, {});
    const bool isNoted = CommitJournal(!changes.empty());
    for (const Staged& staged : changes) Make(staged);
    if (!isNoted || std::exchange(isToSynchronise_, false)) SynchroniseAll();
    // A completion can send, and so lead to the next telegram: it must find this turn's list already empty.
    const std::vector<Waiting> finished = std::exchange(waiting_, {});
    const std::int64_t nowUs = NowUs();
    if (times_ && (isNoted || !changes.empty())) times_->commits.Observe(nowUs - beganUs);
    for (const Waiting& waiting : finished) {
        if (times_ && waiting.telegram->isWhole)
            times_->acknowledgements.Observe(nowUs - waiting.telegram->beganUs);
        waiting.completion(waiting.telegram->isWhole);
    }
    if (listener_) listener_->Committed();
}

void EventCommit::CommitAll() {
    Commit();
    for (int i = 0; i < kMostFollowing && isRequested_; ++i) Commit();
}

void EventCommit::SynchroniseAll() {
    const std::int64_t upTo = journal_ ? journal_->LastId() : 0;
    const bool isSafe = disk_.Synchronise(kAll);
    waitsSinceMs_ = -1;
    if (!isSafe) return FailAll(disk_.LastError());
    if (listener_) listener_->Synchronised(true, {});
    const bool isAllMade = staged_.empty() && (!listener_ || listener_->AreAllChangesMade());
    if (journal_ && isAllMade) journal_->NoteFilesSafe(upTo);
}

void EventCommit::UseIdleMoment(const Clock& clock) {
    const bool isBusy = std::exchange(wasBusy_, false);
    const std::int64_t now = clock.MonotonicMs();
    const bool isAnyWaiting = disk_.WaitingCount() > 0;
    if (journal_) journal_->Tidy(isBusy || isAnyWaiting);
    if (!isAnyWaiting) {
        waitsSinceMs_ = -1;
        return;
    }
    if (waitsSinceMs_ < 0) waitsSinceMs_ = now;
    if (isBusy && now - waitsSinceMs_ < kOverdueMs) return;
    while (disk_.WaitingCount() > kFilesAtOnce && clock.MonotonicMs() - now < kMostMsAtOnce) {
        if (!disk_.Synchronise(kFilesAtOnce)) return FailAll(disk_.LastError());
    }
    if (disk_.WaitingCount() > kFilesAtOnce) return;
    SynchroniseAll();
    if (journal_ && !journal_->HasStaged()) TellJournal(journal_->Commit());
}

}  // namespace nordkeep
