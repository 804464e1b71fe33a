#pragma once

#include "console/lists/RowModel.h"

#include <unordered_map>

namespace nordkeep {

/// A list of a set's objects, types or codes: rows in the order of their file, or sorted by a column.
class TableRows : public RowModel {
 public:
    int RowCount() const override { return static_cast<int>(order_.size()); }
    Text Cell(int row, int column) const override;
    Text KeyOf(int row) const override;
    int RowOf(TextView key) const override;
    void ClickHeading(int column) override;
    void Sort(Sorting sorting) override;
    int SortColumn() const override { return sorting_.column; }
    SortDirection Direction() const override { return sorting_.direction; }
    void Flush() override;

 protected:
    /// The rows as the file has them, from 0 to SourceCount() - 1. No two keys are equal.
    virtual int SourceCount() const = 0;
    virtual Text SourceCell(int source, int column) const = 0;
    virtual Text SourceKey(int source) const = 0;
    virtual Text SourceSortKey(int source, int column) const {
        return CollationKey(SourceCell(source, column));
    }
    /// The source of a row; -1 for none.
    int SourceOf(int row) const;
    /// Takes the content of the source anew; `change` brings it about.
    template <class Change>
    void Renew(Change&& change) {
        TellRoundBegins();
        Tell({RowChange::Kind::Reset}, [&] {
            change();
            Arrange();
        });
        TellRoundEnds();
    }
    /// The row is painted again at the next Flush.
    void Mark(TextView key);
    void MarkAllRows() { isAllMarked_ = true; }

 private:
    void Arrange();

    std::vector<int> order_{};              // sources, as they are shown
    std::unordered_map<Text, int> rows_{};  // by key
    std::vector<Text> marked_{};
    bool isAllMarked_ = false;
    Sorting sorting_{};
};

}  // namespace nordkeep
