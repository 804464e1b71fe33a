#include "console/lists/RowFinder.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

bool HasWordThatBegins(TextView cell, TextView wanted) {
    for (std::size_t at = FindNoCase(cell, wanted); at != Text::npos; at = FindNoCase(cell, wanted, at + 1)) {
        if (at == 0 || cell[at - 1] == ' ') return true;
    }
    return false;
}

}  // namespace

void RowFinder::Begin(TextView wanted, By by, int from) {
    words_.clear();
    if (by == By::Begin) {
        words_.emplace_back(wanted);
    } else {
        for (const Text& word : Split(wanted, ' ')) {
            if (!word.empty()) words_.push_back(word);
        }
    }
    by_ = by;
    at_ = std::max(0, from);
    seen_ = 0;
    isBusy_ = !TrimBlanks(wanted).empty();
}

bool RowFinder::Fits(const RowModel& rows, int row) const {
    if (by_ == By::Begin) return HasWordThatBegins(rows.Cell(row, 0), words_.front());
    std::vector<Text> cells;
    for (int column = 0; column < rows.ColumnCount(); ++column) cells.push_back(rows.Cell(row, column));
    return std::ranges::all_of(words_, [&](const Text& word) {
        return std::ranges::any_of(cells,
                                   [&](const Text& cell) { return FindNoCase(cell, word) != Text::npos; });
    });
}

int RowFinder::Step(const RowModel& rows, int most) {
    const int count = rows.RowCount();
    for (; isBusy_ && most > 0; --most, ++seen_, ++at_) {
        if (seen_ >= count) {
            isBusy_ = false;
            break;
        }
        if (at_ >= count) at_ = 0;
        if (!Fits(rows, at_)) continue;
        isBusy_ = false;
        return at_;
    }
    return -1;
}

}  // namespace nordkeep
