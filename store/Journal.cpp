#include "store/Journal.h"

#include "runtime/Json.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace nordkeep {
namespace {

constexpr TextView kFile = "Data\\Journal.db";
constexpr TextView kNewerFile = "Data\\Journal.behind";
constexpr const char* kMarkFiles = "files";
constexpr const char* kMarkClean = "clean";
/// A database that cannot be written must not hold up every event with a try.
constexpr int kTryAgainMs = 1000;
/// What gathers while the database cannot be written; more of it would only use up the memory.
constexpr std::size_t kMostStaged = 20'000;
constexpr std::size_t kPrunedAtOnce = 200;

constexpr std::array kNames = {"event",  "change",  "removed", "waiting",   "done",   "comment",
                               "end",    "archive", "service", "alivetest", "edit",   "login",
                               "logout", "refused", "send",    "silence",   "reopen", "handover"};

}  // namespace

const char* NameOf(JournalKind kind) {
    return kNames[static_cast<std::size_t>(kind)];
}

std::string UtcStamp(std::int64_t ms) {
    const std::chrono::sys_time<std::chrono::milliseconds> time{std::chrono::milliseconds(ms)};
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::array<char, 64> stamp{};
    std::snprintf(stamp.data(), stamp.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()),
                  static_cast<int>(clock.subseconds().count()));
    return stamp.data();
}

bool Journal::Fail() {
    lastError_.assign(kFile).append(": ").append(FromUtf8(file_.LastError()));
    return false;
}

bool Journal::Open() {
    triedAtMs_ = clock_.MonotonicMs();
    if (!file_.Open(dataFolder_.Resolve(kFile))) return Fail();
    ReadMarks();
    if (ReadWaiting()) return true;
    Fail();
    file_.Close();
    return false;
}

void Journal::ReadMarks() {
    committedId_ = file_.LastId();
    nextId_ = std::max(nextId_, committedId_ + 1);
    filesSafe_ = file_.Mark(kMarkFiles);
    cleanId_ = file_.Mark(kMarkClean);
    wasClean_ = cleanId_ == committedId_;
    if (const auto text = ReadFile(dataFolder_.Resolve(kNewerFile)))
        newerFrom_ = ReadJsonObject(*text).value_or(JsonMembers()).Integer("entry");
}

bool Journal::ReadWaiting() {
    constexpr std::array kinds = {std::string_view("waiting"), std::string_view("done")};
    std::map<std::int64_t, std::string> open;
    const bool isRead = file_.Read(0, kinds, 0, [&](const JournalRow& row) {
        if (row.kind == kinds.front()) {
            open[row.id] = row.data;
        } else if (const auto done = ReadJsonObject(row.data)) {
            open.erase(done->Integer("waiting"));
        }
    });
    if (isRead) waiting_.merge(open);
    return isRead;
}

JournalRow Journal::RowOf(const JournalEntry& entry) {
    return {.id = nextId_++,
            .time = UtcStamp(clock_.UtcMs()),
            .kind = NameOf(entry.kind),
            .event = ToUtf8(entry.event),
            .status = entry.status,
            .priority = ToUtf8(entry.priority),
            .object = ToUtf8(entry.object),
            .type = ToUtf8(entry.type),
            .port = ToUtf8(entry.port),
            .user = ToUtf8(entry.user),
            .station = ToUtf8(entry.station),
            .text = ToUtf8(entry.text),
            .data = entry.data};
}

std::int64_t Journal::Note(const JournalEntry& entry) {
    // While it is not known where the database ends, ids begin where no count of entries ever comes to.
    if (committedId_ == 0 && !file_.IsOpen()) nextId_ = std::max(nextId_, clock_.UtcMs());
    // During an outage; one turn that has much to tell is kept whole. What waits or is settled must not be
    // the part that is given up.
    if (staged_.size() >= kMostStaged && !IsWorking()) {
        const auto isHeld = [](const JournalRow& row) { return row.kind == "waiting" || row.kind == "done"; };
        const auto first = std::find_if_not(staged_.begin(), staged_.end(), isHeld);
        if (first != staged_.end()) staged_.erase(first);
    }
    staged_.push_back(RowOf(entry));
    return staged_.back().id;
}

std::int64_t Journal::NoteWaiting(JournalEntry entry) {
    entry.kind = JournalKind::Waiting;
    const std::int64_t id = Note(entry);
    waiting_[id] = entry.data;
    return id;
}

void Journal::NoteDone(std::int64_t waiting) {
    if (waiting == 0 || waiting_.erase(waiting) == 0) return;
    Note({.kind = JournalKind::Done, .data = JsonObject().Add("waiting", waiting).Take()});
}

std::vector<WaitingEntry> Journal::Waiting() const {
    std::vector<WaitingEntry> entries;
    for (const auto& [id, data] : waiting_) entries.push_back({id, data});
    return entries;
}

bool Journal::AppendStaged() {
    std::vector<JournalMark> marks;
    if (filesSafeToNote_ > filesSafe_) marks.push_back({kMarkFiles, filesSafeToNote_});
    if (staged_.empty() && marks.empty()) return true;
    if (!file_.Append(staged_, marks)) return Fail();
    if (!staged_.empty()) committedId_ = staged_.back().id;
    staged_.clear();
    filesSafe_ = std::max(filesSafe_, filesSafeToNote_);
    return true;
}

bool Journal::Commit() {
    const bool isToWait = hasFailed_ || !file_.IsOpen();
    if (isToWait && clock_.MonotonicMs() - triedAtMs_ < kTryAgainMs) return false;
    triedAtMs_ = clock_.MonotonicMs();
    const bool isWritten = (file_.IsOpen() || Open()) && AppendStaged();
    hasFailed_ = !isWritten;
    return isWritten;
}

bool Journal::NoteFilesAreNewer() {
    if (newerFrom_ == committedId_ && newerFrom_ >= 0) return true;
    const std::string text = JsonObject().Add("entry", committedId_).Take();
    if (!ReplaceFile(dataFolder_.Resolve(kNewerFile), text)) return false;
    newerFrom_ = committedId_;
    return true;
}

void Journal::NoteFilesSafe(std::int64_t upTo) {
    filesSafeToNote_ = std::max(filesSafeToNote_, upTo);
}

std::int64_t Journal::FilesSafeUpTo() const {
    return std::max(filesSafe_, newerFrom_);
}

bool Journal::NoteCleanStop() {
    if (!Commit() || filesSafe_ < committedId_) return false;
    const JournalMark marks[] = {{kMarkFiles, committedId_}, {kMarkClean, committedId_}};
    return file_.Append({}, marks) || Fail();
}

bool Journal::Read(std::int64_t after, std::span<const JournalKind> kinds,
                   const std::function<void(const JournalRow&)>& show) {
    std::vector<std::string_view> names;
    for (const JournalKind kind : kinds) names.emplace_back(NameOf(kind));
    return file_.Read(after, names, 0, show) || Fail();
}

bool Journal::ReadSome(std::int64_t after, std::size_t most,
                       const std::function<void(const JournalRow&)>& show) {
    return file_.IsOpen() && file_.Read(after, {}, most, show);
}

std::optional<JournalRow> Journal::LastOf(const Text& event, std::optional<JournalKind> kind) {
    if (!file_.IsOpen()) return std::nullopt;
    return file_.ReadLastOf(ToUtf8(event), kind ? NameOf(*kind) : "");
}

std::int64_t Journal::OldestWaiting() const {
    return waiting_.empty() ? nextId_ : waiting_.begin()->first;
}

// The newest entry stays, since the next id follows from it.
bool Journal::Prune(int days) {
    if (days <= 0 || !file_.IsOpen()) return false;
    const std::int64_t below = std::min({OldestWaiting(), FilesSafeUpTo(), committedId_});
    const std::int64_t ms = clock_.UtcMs() - std::int64_t{days} * 86'400'000;
    // A start behind a crash sets the service modes by all entries since the last clean stop.
    const auto pruned = file_.Prune({.time = UtcStamp(ms),
                                     .below = below,
                                     .spared = NameOf(JournalKind::Service),
                                     .sparedAfter = cleanId_,
                                     .most = kPrunedAtOnce});
    if (!pruned) Fail();
    return pruned.value_or(0) >= kPrunedAtOnce;
}

}  // namespace nordkeep
