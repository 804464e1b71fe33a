#include "platform/sqlite/JournalRows.h"
#include "tools/export/Entries.h"

#include <sqlite3.h>

namespace nordkeep {
namespace {

constexpr int kPatienceMs = 5000;

/// A database file, and its statements, whose failures are thrown.
class Database {
 public:
    Database(std::string path, int flags) : path_(std::move(path)) {
        if (sqlite3_open_v2(path_.c_str(), &database_, flags, nullptr) != SQLITE_OK) {
            const ExportError error = Error();
            sqlite3_close_v2(database_);
            throw error;
        }
        sqlite3_busy_timeout(database_, kPatienceMs);
    }
    ~Database() { sqlite3_close_v2(database_); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    ExportError Error() const { return ExportError(path_ + ": " + sqlite3_errmsg(database_)); }
    void Run(const std::string& sql) {
        if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) throw Error();
    }
    using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;
    Statement Prepare(const std::string& sql) const {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) throw Error();
        return {statement, &sqlite3_finalize};
    }
    /// True for a row, false at the end.
    bool Step(const Statement& statement) const {
        const int result = sqlite3_step(statement.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) throw Error();
        return result == SQLITE_ROW;
    }

 private:
    std::string path_;
    sqlite3* database_ = nullptr;
};

class JournalFileSource final : public EntrySource {
 public:
    explicit JournalFileSource(const std::string& path) : database_(path, SQLITE_OPEN_READONLY) {}

    std::vector<JournalRow> Read(std::int64_t after, std::size_t most) override {
        const auto read = database_.Prepare(std::string("SELECT ") + kEntriesColumns +
                                            " FROM entries WHERE id > ?1 ORDER BY id LIMIT ?2");
        sqlite3_bind_int64(read.get(), 1, after);
        sqlite3_bind_int64(read.get(), 2, static_cast<std::int64_t>(most));
        std::vector<JournalRow> rows;
        while (database_.Step(read)) rows.push_back(RowOf(read.get()));
        return rows;
    }

 private:
    Database database_;
};

class SqliteTarget final : public EntryTarget {
 public:
    explicit SqliteTarget(const std::string& path)
        : database_(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE) {}

    std::int64_t LastId() override {
        database_.Run(kEntriesTable);
        const auto last = database_.Prepare("SELECT max(id) FROM entries");
        return database_.Step(last) ? sqlite3_column_int64(last.get(), 0) : 0;
    }

    void Write(const std::vector<JournalRow>& rows) override {
        database_.Run("BEGIN IMMEDIATE");
        try {
            const auto insert =
                database_.Prepare(std::string("INSERT OR IGNORE INTO entries(") + kEntriesColumns +
                                  ") VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11,?12,?13)");
            for (const JournalRow& row : rows) {
                BindRow(insert.get(), row);
                database_.Step(insert);
                sqlite3_reset(insert.get());
            }
            database_.Run("COMMIT");
        } catch (const ExportError&) {
            Undo();
            throw;
        }
    }

 private:
    // What cannot be undone has been undone already.
    void Undo() {
        try {
            database_.Run("ROLLBACK");
        } catch (const ExportError&) {
        }
    }

    Database database_;
};

}  // namespace

std::unique_ptr<EntrySource> OpenJournalFile(const std::string& path) {
    return std::make_unique<JournalFileSource>(path);
}

std::unique_ptr<EntryTarget> OpenSqlite(const std::string& path) {
    return std::make_unique<SqliteTarget>(path);
}

}  // namespace nordkeep
