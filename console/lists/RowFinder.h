#pragma once

#include "console/lists/RowModel.h"

namespace nordkeep {

/// Looks for the next row of a list by its cells, in slices, since cells are made when they are asked for and
/// a list can have a million rows.
class RowFinder {
 public:
    enum class By {
        Words,  // all of them stand somewhere in the row
        Begin,  // a word of the first cell begins so
    };
    /// Begins at the row `from` and goes round once. An empty text finds nothing.
    void Begin(TextView wanted, By by, int from);
    void Stop() { isBusy_ = false; }
    bool IsBusy() const { return isBusy_; }
    /// Looks at some more rows; the row that fits, -1 as long as there is none. Rows may have come and gone.
    int Step(const RowModel& rows, int most);

 private:
    bool Fits(const RowModel& rows, int row) const;

    std::vector<Text> words_{};
    By by_ = By::Words;
    int at_ = 0;
    int seen_ = 0;
    bool isBusy_ = false;
};

}  // namespace nordkeep
