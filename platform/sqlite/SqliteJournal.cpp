#include "platform/sqlite/SqliteJournal.h"

#include "platform/sqlite/GatheredLog.h"
#include "platform/sqlite/JournalRows.h"

#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <limits>
#include <utility>

namespace nordkeep {
namespace {

/// Somebody who looks at the journal may hold it for a moment; nobody may hold up the loop.
constexpr int kMostWaitMs = 20;
/// Transactions after which an idle moment is used to work the log of writes off.
constexpr int kCommitsToTidy = 250;
/// Of a new database. Small: each transaction writes every page that it touches whole.
constexpr int kPageBytes = 2048;
constexpr int kPageHeadBytes = 24;  // before each page of the log of writes
/// Pages in the log of writes above which it is worked off also while telegrams come; the last transactions
/// before that have room, too.
constexpr int kMostPagesOfLog = SqliteJournal::kMostOfLog / (kPageBytes + kPageHeadBytes) - 64;
/// So many times its room has to be free on a medium that the log of writes takes it from.
constexpr std::uintmax_t kTimesFree = 16;

constexpr const char* kIndexes =
    "CREATE INDEX IF NOT EXISTS entries_by_time ON entries(time);"
    "CREATE INDEX IF NOT EXISTS entries_by_event ON entries(event) WHERE event <> '';"
    "CREATE INDEX IF NOT EXISTS entries_by_object ON entries(object) WHERE object <> '';"
    "CREATE INDEX IF NOT EXISTS entries_held ON entries(id) WHERE kind IN ('waiting', 'done');"
    "CREATE TABLE IF NOT EXISTS marks(name TEXT PRIMARY KEY, value INTEGER NOT NULL) WITHOUT ROWID;";

std::string& FileLayer() {
    static std::string name;
    return name;
}

void BindText(sqlite3_stmt* statement, int place, const std::string& text) {
    sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

bool Step(sqlite3_stmt* statement) {
    const int result = sqlite3_step(statement);
    sqlite3_reset(statement);
    return result == SQLITE_DONE;
}

}  // namespace

void SqliteJournal::CloseDatabase::operator()(sqlite3* database) const {
    sqlite3_close_v2(database);
}

void SqliteJournal::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

SqliteJournal::SqliteJournal(std::int64_t room) : room_(room) {}
SqliteJournal::~SqliteJournal() {
    Close();
}

void SqliteJournal::UseFileLayer(const std::string& name) {
    FileLayer() = name;
}

bool SqliteJournal::Fail(const char* what) {
    lastError_ =
        std::string(what) + ": " + (database_ ? sqlite3_errmsg(database_.get()) : "the database is not open");
    return false;
}

bool SqliteJournal::Open(const NativePath& path) {
    Close();
    if (OpenFile(path) && PrepareAll()) {
        MakeRoom(path);
        return true;
    }
    Close();
    return false;
}

bool SqliteJournal::OpenFile(const NativePath& path) {
    sqlite3* database = nullptr;
    const std::string layer = GatheredLogLayer(FileLayer());
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(path.c_str(), &database, flags, layer.c_str());
    database_.reset(database);
    if (result != SQLITE_OK) return Fail("open");
    sqlite3_busy_timeout(database, kMostWaitMs);
    sqlite3_extended_result_codes(database, 1);
    // Full: a commit returns when it is on the medium. The log of writes is worked off in idle moments, so
    // that no telegram waits for it, and when it has become long; a limit keeps its file from staying large
    // after a busy hour.
    const std::string pageSize = "PRAGMA page_size=" + std::to_string(kPageBytes);
    const std::string limit = "PRAGMA journal_size_limit=" + std::to_string(kMostOfLog);
    const bool isReady = Run(pageSize.c_str()) && Run("PRAGMA journal_mode=WAL") &&
                         Run("PRAGMA synchronous=FULL") && Run("PRAGMA wal_autocheckpoint=0") &&
                         Run(limit.c_str()) && Run("PRAGMA cache_size=-4096") && Run(kEntriesTable) &&
                         Run(kIndexes);
    if (isReady) FollowLog();
    return isReady;
}

// To be done last: the library keeps its own limit of the log, which is switched off above, in the same
// place.
void SqliteJournal::FollowLog() {
    const auto notePages = [](void* pages, sqlite3*, const char*, int count) {
        *static_cast<int*>(pages) = count;
        return SQLITE_OK;
    };
    sqlite3_wal_hook(database_.get(), notePages, &pagesOfLog_);
}

// Without it all is the same, only slower until the log has once become as long.
void SqliteJournal::MakeRoom(const NativePath& path) {
    const std::int64_t room = std::exchange(room_, 0);
    if (room == 0) return;
    std::error_code error;
    const auto free = std::filesystem::space(std::filesystem::path(path).parent_path(), error).available;
    if (!error && free / kTimesFree >= static_cast<std::uintmax_t>(room))
        MakeRoomInLog(database_.get(), room);
}

bool SqliteJournal::PrepareAll() {
    insert_ = Prepare(std::string("INSERT INTO entries(") + kEntriesColumns +
                      ") VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12,?13)");
    setMark_ = Prepare(
        "INSERT INTO marks(name, value) VALUES(?1, ?2)"
        " ON CONFLICT(name) DO UPDATE SET value = excluded.value");
    begin_ = Prepare("BEGIN IMMEDIATE");
    commit_ = Prepare("COMMIT");
    hold_ = Prepare("SELECT 1 FROM sqlite_schema");
    return (insert_ && setMark_ && begin_ && commit_ && hold_) || Fail("prepare");
}

void SqliteJournal::Close() {
    insert_.reset();
    setMark_.reset();
    begin_.reset();
    commit_.reset();
    hold_.reset();
    isHeld_ = false;
    database_.reset();
    commitsToTidy_ = 0;
    pagesOfLog_ = 0;
}

SqliteJournal::Statement SqliteJournal::Prepare(const std::string& sql) const {
    sqlite3_stmt* statement = nullptr;
    if (database_) sqlite3_prepare_v2(database_.get(), sql.c_str(), -1, &statement, nullptr);
    return Statement(statement);
}

bool SqliteJournal::Run(const char* sql) {
    return sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK || Fail(sql);
}

bool SqliteJournal::Insert(const JournalRow& row) {
    BindRow(insert_.get(), row);
    return Step(insert_.get()) || Fail("insert");
}

bool SqliteJournal::SetMark(const JournalMark& mark) {
    sqlite3_bind_text(setMark_.get(), 1, mark.name, -1, SQLITE_STATIC);
    sqlite3_bind_int64(setMark_.get(), 2, mark.value);
    return Step(setMark_.get()) || Fail("mark");
}

bool SqliteJournal::AppendAll(std::span<const JournalRow> rows, std::span<const JournalMark> marks) {
    for (const JournalRow& row : rows) {
        if (!Insert(row)) return false;
    }
    for (const JournalMark& mark : marks) {
        if (!SetMark(mark)) return false;
    }
    return true;
}

// A reader that has not come to its end keeps the locks that every transaction would have to take and give
// back; it sees what this connection commits. When somebody else has written meanwhile it is out of date.
bool SqliteJournal::Begin() {
    if (!isHeld_) isHeld_ = sqlite3_step(hold_.get()) == SQLITE_ROW;
    if (Step(begin_.get())) return true;
    LetGo();
    return Step(begin_.get()) || Fail("begin");
}

void SqliteJournal::LetGo() {
    sqlite3_reset(hold_.get());
    isHeld_ = false;
}

bool SqliteJournal::Append(std::span<const JournalRow> rows, std::span<const JournalMark> marks) {
    if (!database_) return Fail("append");
    if (!Begin()) return false;
    if (AppendAll(rows, marks) && (Step(commit_.get()) || Fail("commit"))) {
        ++commitsToTidy_;
        return true;
    }
    // A failed commit can leave the transaction open; its first error is the one to tell.
    const std::string reason = lastError_;
    LetGo();
    sqlite3_exec(database_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    lastError_ = reason;
    return false;
}

std::int64_t SqliteJournal::LastId() const {
    const Statement last = Prepare("SELECT max(id) FROM entries");
    return last && sqlite3_step(last.get()) == SQLITE_ROW ? sqlite3_column_int64(last.get(), 0) : 0;
}

std::int64_t SqliteJournal::Mark(const char* name) const {
    const Statement mark = Prepare("SELECT value FROM marks WHERE name = ?1");
    if (!mark) return 0;
    sqlite3_bind_text(mark.get(), 1, name, -1, SQLITE_STATIC);
    return sqlite3_step(mark.get()) == SQLITE_ROW ? sqlite3_column_int64(mark.get(), 0) : 0;
}

bool SqliteJournal::Read(std::int64_t after, std::span<const std::string_view> kinds, std::size_t most,
                         const std::function<void(const JournalRow&)>& show) {
    std::string sql = std::string("SELECT ") + kEntriesColumns + " FROM entries WHERE id > ?1";
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        sql.append(i == 0 ? " AND kind IN ('" : "','").append(kinds[i]);
    }
    const Statement read = Prepare(sql + (kinds.empty() ? "" : "')") + " ORDER BY id LIMIT ?2");
    if (!read) return Fail("read");
    sqlite3_bind_int64(read.get(), 1, after);
    sqlite3_bind_int64(read.get(), 2, most == 0 ? -1 : static_cast<std::int64_t>(most));
    return ShowAll(read.get(), show);
}

bool SqliteJournal::ShowAll(sqlite3_stmt* read, const std::function<void(const JournalRow&)>& show) {
    int result = 0;
    while ((result = sqlite3_step(read)) == SQLITE_ROW) show(RowOf(read));
    return result == SQLITE_DONE || Fail("read");
}

// The index by time ends in the id: it gives the order, and the place to go on from.
bool SqliteJournal::ReadStretch(const JournalStretch& stretch,
                                const std::function<void(const JournalRow&)>& show) {
    std::string sql = std::string("SELECT ") + kEntriesColumns + " FROM entries WHERE time >= ?1";
    if (!stretch.to.empty()) sql += " AND time < ?2";
    if (!stretch.besideTime.empty())
        sql += stretch.isNewestFirst ? " AND (time, id) < (?3, ?4)" : " AND (time, id) > (?3, ?4)";
    sql += stretch.isNewestFirst ? " ORDER BY time DESC, id DESC LIMIT ?5" : " ORDER BY time, id LIMIT ?5";
    const Statement read = Prepare(sql);
    if (!read) return Fail("read");
    BindText(read.get(), 1, stretch.from);
    if (!stretch.to.empty()) BindText(read.get(), 2, stretch.to);
    if (!stretch.besideTime.empty()) {
        BindText(read.get(), 3, stretch.besideTime);
        sqlite3_bind_int64(read.get(), 4, stretch.besideId);
    }
    sqlite3_bind_int64(read.get(), 5, static_cast<std::int64_t>(stretch.most));
    return ShowAll(read.get(), show);
}

bool SqliteJournal::ReadSubject(const JournalSubject& subject,
                                const std::function<void(const JournalRow&)>& show) {
    const bool isEvent = !subject.event.empty();
    const Statement read = Prepare(std::string("SELECT ") + kEntriesColumns + " FROM entries WHERE " +
                                   (isEvent ? "event = ?1 AND event <> ''" : "object = ?1 AND object <> ''") +
                                   " AND id < ?2 ORDER BY id DESC LIMIT ?3");
    if (!read) return Fail("read");
    BindText(read.get(), 1, isEvent ? subject.event : subject.object);
    sqlite3_bind_int64(read.get(), 2,
                       subject.below > 0 ? subject.below : std::numeric_limits<std::int64_t>::max());
    sqlite3_bind_int64(read.get(), 3, static_cast<std::int64_t>(subject.most));
    return ShowAll(read.get(), show);
}

std::optional<JournalRow> SqliteJournal::ReadLast(std::string_view kind) {
    const Statement read = Prepare(std::string("SELECT ") + kEntriesColumns +
                                   " FROM entries WHERE kind = ?1 ORDER BY id DESC LIMIT 1");
    if (!read) return std::nullopt;
    sqlite3_bind_text(read.get(), 1, kind.data(), static_cast<int>(kind.size()), SQLITE_STATIC);
    if (sqlite3_step(read.get()) != SQLITE_ROW) return std::nullopt;
    return RowOf(read.get());
}

std::optional<JournalRow> SqliteJournal::ReadLastOf(std::string_view event, std::string_view kind) {
    const char* const ofKind = kind.empty() ? "" : " AND kind = ?2";
    const Statement read =
        Prepare(std::string("SELECT ") + kEntriesColumns + " FROM entries WHERE event = ?1 AND event <> ''" +
                ofKind + " ORDER BY id DESC LIMIT 1");
    if (!read) return std::nullopt;
    sqlite3_bind_text(read.get(), 1, event.data(), static_cast<int>(event.size()), SQLITE_STATIC);
    if (!kind.empty())
        sqlite3_bind_text(read.get(), 2, kind.data(), static_cast<int>(kind.size()), SQLITE_STATIC);
    if (sqlite3_step(read.get()) != SQLITE_ROW) return std::nullopt;
    return RowOf(read.get());
}

std::optional<std::size_t> SqliteJournal::Prune(const Pruning& pruning) {
    const Statement prune = Prepare(
        "DELETE FROM entries WHERE id IN (SELECT id FROM entries WHERE time < ?1 AND id < ?2"
        " AND NOT (kind = ?4 AND id > ?5) ORDER BY time LIMIT ?3)");
    if (!prune) {
        Fail("prune");
        return std::nullopt;
    }
    const std::string spared(pruning.spared);  // bound, so it stays until the statement has run
    BindText(prune.get(), 1, pruning.time);
    sqlite3_bind_int64(prune.get(), 2, pruning.below);
    sqlite3_bind_int64(prune.get(), 3, static_cast<std::int64_t>(pruning.most));
    BindText(prune.get(), 4, spared);
    sqlite3_bind_int64(prune.get(), 5, pruning.sparedAfter);
    if (!Step(prune.get())) {
        Fail("prune");
        return std::nullopt;
    }
    commitsToTidy_ += kCommitsToTidy;
    return static_cast<std::size_t>(sqlite3_changes(database_.get()));
}

bool SqliteJournal::Tidy(bool isBusy) {
    if (!database_ || (isBusy ? pagesOfLog_ < kMostPagesOfLog : commitsToTidy_ < kCommitsToTidy))
        return false;
    commitsToTidy_ = 0;
    pagesOfLog_ = 0;
    LetGo();
    sqlite3_wal_checkpoint_v2(database_.get(), nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    return true;
}

}  // namespace nordkeep
