#pragma once

#include "console/lists/RowModel.h"

namespace nordkeep {

/// What is selected in a list, by the keys of rows. Rows may go meanwhile.
struct RowSelection {
    std::vector<Text> keys{};
    Text current{};

    /// A selected row is still there, shown or hidden.
    bool IsIn(const RowModel& list) const;
    /// The keys of the rows that are shown, from above.
    std::vector<Text> KeysInOrder(const RowModel& list) const;
};

}  // namespace nordkeep
