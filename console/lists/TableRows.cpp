#include "console/lists/TableRows.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::size_t kMostMarked = 500;

}  // namespace

int TableRows::SourceOf(int row) const {
    return row >= 0 && row < RowCount() ? order_[static_cast<std::size_t>(row)] : -1;
}

Text TableRows::Cell(int row, int column) const {
    const int source = SourceOf(row);
    return source < 0 || column < 0 || column >= ColumnCount() ? Text()
                                                               : Printable(SourceCell(source, column));
}

Text TableRows::KeyOf(int row) const {
    const int source = SourceOf(row);
    return source < 0 ? Text() : SourceKey(source);
}

int TableRows::RowOf(TextView key) const {
    const auto known = rows_.find(Text(key));
    return known == rows_.end() ? -1 : known->second;
}

void TableRows::Arrange() {
    const auto count = static_cast<std::size_t>(SourceCount());
    order_.resize(count);
    std::iota(order_.begin(), order_.end(), 0);
    if (sorting_.column >= 0) {
        std::vector<Text> keys(count);
        for (std::size_t i = 0; i < count; ++i) {
            keys[i] = SourceSortKey(static_cast<int>(i), sorting_.column);
        }
        const bool isDown = sorting_.direction == SortDirection::Descending;
        std::ranges::stable_sort(order_, [&](int a, int b) {
            const int order = keys[static_cast<std::size_t>(a)].compare(keys[static_cast<std::size_t>(b)]);
            return isDown ? order > 0 : order < 0;
        });
    }
    rows_.clear();
    for (int row = 0; row < RowCount(); ++row) rows_.emplace(SourceKey(SourceOf(row)), row);
    marked_.clear();
    isAllMarked_ = false;
}

void TableRows::ClickHeading(int column) {
    if (column < 0 || column >= ColumnCount()) return;
    Renew([&] { sorting_.Click(column); });
}

void TableRows::Sort(Sorting sorting) {
    Renew([&] { sorting_ = sorting.column < ColumnCount() ? sorting : Sorting(); });
}

void TableRows::Mark(TextView key) {
    if (isAllMarked_) return;
    marked_.emplace_back(key);
    if (marked_.size() > kMostMarked) {
        marked_.clear();
        isAllMarked_ = true;
    }
}

void TableRows::Flush() {
    if (marked_.empty() && !isAllMarked_) return;
    TellRoundBegins();
    if (isAllMarked_ && RowCount() > 0) TellCells(0, RowCount() - 1);
    for (const Text& key : std::exchange(marked_, {})) {
        if (const int row = RowOf(key); row >= 0) TellCells(row, row);
    }
    isAllMarked_ = false;
    TellRoundEnds();
}

}  // namespace nordkeep
