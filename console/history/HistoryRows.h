#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"
#include "reports/HistoryWalk.h"

namespace nordkeep {

/// What a kind of entry is called.
Text KindText(const Captions& captions, TextView kind);
/// Who did it, for people; empty for the system.
Text DoerText(const Captions& captions, const HistoryEntry& entry);

/// Entries of the journal on the screen and on paper.
class HistoryRows final : public TableRows {
 public:
    explicit HistoryRows(const Captions& captions) : captions_(captions) {}

    void Clear();
    void Add(const std::vector<HistoryEntry>& entries);
    /// In the order in which they were found.
    const std::vector<HistoryEntry>& Entries() const { return entries_; }
    /// The entry of a row's key; none when there is none.
    const HistoryEntry* EntryOf(TextView key) const;

    int ColumnCount() const override;
    Text Heading(int column) const override;
    int DefaultWidth(int column) const override;
    Text Value(const HistoryEntry& entry, int column) const;

 protected:
    int SourceCount() const override { return static_cast<int>(entries_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override;

 private:
    const Captions& captions_;
    std::vector<HistoryEntry> entries_{};
};

}  // namespace nordkeep
