#pragma once

#include "platform/Files.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace nordkeep {

/// One entry of the journal as it stands in its database. All texts are UTF-8, and empty where a kind of
/// entry has nothing to say.
struct JournalRow {
    std::int64_t id = 0;
    std::string time{};  // UTC, "2026-11-21T20:15:30.123Z"
    std::string kind{};
    std::string event{};  // file pointer such as "A0000007"
    std::optional<int> status{};
    std::string priority{};
    std::string object{};
    std::string type{};
    std::string port{};
    std::string user{};
    std::string station{};
    std::string text{};
    std::string data{};  // JSON
};

/// A number that the database keeps beside the entries, such as how far they have been worked off.
struct JournalMark {
    const char* name = "";
    std::int64_t value = 0;
};

/// A stretch of the journal in the order of its times, whatever the clock did meanwhile.
struct JournalStretch {
    std::string from{};  // stamps; the second is not included
    std::string to{};
    std::string besideTime{};  // goes on behind this entry; empty: from the begin
    std::int64_t besideId = 0;
    bool isNewestFirst = false;
    std::size_t most = 100;
};

/// The entries about one thing, newest first, which an index finds whatever their age.
struct JournalSubject {
    std::string event{};     // a file pointer, or
    std::string object{};    // an ID code
    std::int64_t below = 0;  // only older entries than that of this id; 0: all
    std::size_t most = 100;
};

/// The database under the journal. One program writes it; others may read it at the same time.
class JournalFile {
 public:
    virtual ~JournalFile() = default;
    /// Opens the database, or makes one where there is no file. False, with LastError, for anything else: a
    /// file that cannot be read is never taken for an empty one.
    virtual bool Open(const NativePath& path) = 0;
    virtual bool IsOpen() const = 0;
    virtual void Close() = 0;
    /// Adds the rows and sets the marks in one transaction, which is on the medium when this returns true.
    /// False, with LastError, when nothing of it happened.
    virtual bool Append(std::span<const JournalRow> rows, std::span<const JournalMark> marks) = 0;
    /// The highest id there is; 0 without an entry.
    virtual std::int64_t LastId() const = 0;
    /// 0 for a mark that was never set.
    virtual std::int64_t Mark(const char* name) const = 0;
    /// Shows the entries with an id above `after`, of one of `kinds` (all when empty), in order, and not more
    /// than `most` (0: all). False, with LastError, when they could not all be read.
    virtual bool Read(std::int64_t after, std::span<const std::string_view> kinds, std::size_t most,
                      const std::function<void(const JournalRow&)>& show) = 0;
    /// Shows a stretch. What it costs goes by `most`, not by how much there is. False as above.
    virtual bool ReadStretch(const JournalStretch& stretch,
                             const std::function<void(const JournalRow&)>& show) = 0;
    virtual bool ReadSubject(const JournalSubject& subject,
                             const std::function<void(const JournalRow&)>& show) = 0;
    /// The newest entry of a kind; none without one, and when it cannot be read.
    virtual std::optional<JournalRow> ReadLast(std::string_view kind) = 0;
    /// The newest entry of an event file, of any kind when that is empty; none as above.
    virtual std::optional<JournalRow> ReadLastOf(std::string_view event, std::string_view kind) = 0;
    /// Which entries are to be deleted: up to `most` that are older than `time`, except those of the kind
    /// `spared` with an id above `sparedAfter`, and never one with an id of `below` or higher.
    struct Pruning {
        std::string time{};
        std::int64_t below = 0;
        std::string_view spared{};
        std::int64_t sparedAfter = 0;
        std::size_t most = 0;
    };
    /// Deletes them in one transaction. How many; none on failure.
    virtual std::optional<std::size_t> Prune(const Pruning& pruning) = 0;
    /// Moves the log of writes into the database when enough has gathered. That is work for an idle moment;
    /// a program that has none for hours does it when the log has become long. True when there was something
    /// to do.
    virtual bool Tidy(bool isBusy) = 0;
    virtual const std::string& LastError() const = 0;
};

}  // namespace nordkeep
