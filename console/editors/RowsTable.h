#pragma once

#include "console/editors/RowFormat.h"
#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"

#include <set>

namespace nordkeep {

/// The rows of a file that an editor has open, all or those that a search finds.
class RowsTable final : public TableRows {
 public:
    RowsTable(const RowFormat& format, const Captions& captions, const std::vector<FileItem>& items);

    /// Shows the rows that hold all words, behind a change of the rows that is made meanwhile.
    template <class Change>
    void Show(TextView words, Change&& change) {
        Renew([&] {
            change();
            Find(words);
        });
    }
    void NoteRow(int id) { Mark(std::to_string(id)); }

    /// The rows of these numbers have faults.
    void MarkFaults(std::set<int> ids);
    Glyph Icon(int row) const override;

    int ColumnCount() const override { return static_cast<int>(columns_.size()); }
    Text Heading(int column) const override;
    int DefaultWidth(int column) const override;

 protected:
    int SourceCount() const override { return static_cast<int>(shown_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override { return std::to_string(ItemAt(source).id); }

 private:
    void Find(TextView words);
    const FileItem& ItemAt(int source) const { return items_[shown_[static_cast<std::size_t>(source)]]; }

    const RowFormat& format_;
    const std::vector<FileItem>& items_;
    std::vector<RowFormat::Column> columns_;
    const Captions& captions_;
    std::vector<DescribedKey> keys_{};
    std::set<int> faulty_{};
    std::vector<std::size_t> shown_{};  // places in items_
};

/// True when the text holds every word, in any case.
bool HoldsAllWords(TextView text, TextView words);

}  // namespace nordkeep
