#pragma once

#include "platform/JournalFile.h"

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace nordkeep {

/// The journal in an SQLite database: write-ahead log, and every transaction synchronised.
class SqliteJournal final : public JournalFile {
 public:
    /// What the log of writes takes before it is worked off also while telegrams come, in bytes.
    static constexpr std::int64_t kMostOfLog = 16 << 20;

    /// `room`: bytes that the log of writes gets on the medium when a database is opened for the first time,
    /// where the medium has plenty; with 0 it grows as it needs.
    explicit SqliteJournal(std::int64_t room = 0);
    ~SqliteJournal() override;
    SqliteJournal(const SqliteJournal&) = delete;
    SqliteJournal& operator=(const SqliteJournal&) = delete;

    bool Open(const NativePath& path) override;
    bool IsOpen() const override { return database_ != nullptr; }
    void Close() override;
    bool Append(std::span<const JournalRow> rows, std::span<const JournalMark> marks) override;
    std::int64_t LastId() const override;
    std::int64_t Mark(const char* name) const override;
    bool Read(std::int64_t after, std::span<const std::string_view> kinds, std::size_t most,
              const std::function<void(const JournalRow&)>& show) override;
    bool ReadStretch(const JournalStretch& stretch,
                     const std::function<void(const JournalRow&)>& show) override;
    bool ReadSubject(const JournalSubject& subject,
                     const std::function<void(const JournalRow&)>& show) override;
    std::optional<JournalRow> ReadLast(std::string_view kind) override;
    std::optional<JournalRow> ReadLastOf(std::string_view event, std::string_view kind) override;
    std::optional<std::size_t> Prune(const Pruning& pruning) override;
    bool Tidy(bool isBusy) override;
    const std::string& LastError() const override { return lastError_; }

    /// The name of the file layer that databases opened from now on go through; empty for the system's own.
    /// For tests of media that forget.
    static void UseFileLayer(const std::string& name);

 private:
    struct CloseDatabase {
        void operator()(sqlite3* database) const;
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

    bool OpenFile(const NativePath& path);
    void FollowLog();
    void MakeRoom(const NativePath& path);
    bool PrepareAll();
    Statement Prepare(const std::string& sql) const;
    bool ShowAll(sqlite3_stmt* read, const std::function<void(const JournalRow&)>& show);
    bool Run(const char* sql);
    bool Insert(const JournalRow& row);
    bool SetMark(const JournalMark& mark);
    bool Begin();
    void LetGo();
    bool AppendAll(std::span<const JournalRow> rows, std::span<const JournalMark> marks);
    bool Fail(const char* what);

    std::int64_t room_ = 0;  // none once it has been made: a program at work does not wait for it
    std::unique_ptr<sqlite3, CloseDatabase> database_{};
    Statement insert_{};
    Statement setMark_{};
    Statement begin_{};
    Statement commit_{};
    Statement hold_{};  // keeps hold of the database between transactions while it has a row in hand
    bool isHeld_ = false;
    int commitsToTidy_ = 0;  // since the log of writes was worked off
    int pagesOfLog_ = 0;     // as the last commit left it
    std::string lastError_{};
};

}  // namespace nordkeep
