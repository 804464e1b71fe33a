#pragma once

#include "platform/JournalFile.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace nordkeep {

/// What hinders the export: told to whoever runs it, and tried again unless it runs once.
struct ExportError : std::runtime_error {
    explicit ExportError(const std::string& what, bool isNotReached = false)
        : std::runtime_error(what), isUnreachable(isNotReached) {}

    bool isUnreachable;  // there is no connection to the other side
};

/// Where entries are read. Throws an ExportError when it cannot be.
class EntrySource {
 public:
    virtual ~EntrySource() = default;
    /// Up to `most` entries with an id above `after`, in order.
    virtual std::vector<JournalRow> Read(std::int64_t after, std::size_t most) = 0;
};

/// Where they go: a table `entries` with the journal's columns. Throws an ExportError when it cannot be
/// written.
class EntryTarget {
 public:
    virtual ~EntryTarget() = default;
    /// The highest id there is; 0 without an entry. Makes the table where there is none.
    virtual std::int64_t LastId() = 0;
    /// All of them or none.
    virtual void Write(const std::vector<JournalRow>& rows) = 0;
};

/// The journal of a running or stopped centre, read in place.
std::unique_ptr<EntrySource> OpenJournalFile(const std::string& path);
/// The status service of a centre; the token is empty where none is asked for.
std::unique_ptr<EntrySource> OpenStatusService(const std::string& url, const std::string& token);

std::unique_ptr<EntryTarget> OpenSqlite(const std::string& path);
/// A connection text or URL as the database's own programs take it.
std::unique_ptr<EntryTarget> OpenPostgres(const std::string& connection);

}  // namespace nordkeep
