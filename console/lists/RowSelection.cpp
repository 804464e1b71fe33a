#include "console/lists/RowSelection.h"

#include <algorithm>
#include <utility>

namespace nordkeep {

bool RowSelection::IsIn(const RowModel& list) const {
    return std::ranges::any_of(keys, [&](const Text& key) { return list.Has(key); });
}

std::vector<Text> RowSelection::KeysInOrder(const RowModel& list) const {
    std::vector<std::pair<int, Text>> rows;
    for (const Text& key : keys) {
        if (const int row = list.RowOf(key); row >= 0) rows.emplace_back(row, key);
    }
    std::ranges::sort(rows);
    std::vector<Text> ordered;
    for (auto& [row, key] : rows) ordered.push_back(std::move(key));
    return ordered;
}

}  // namespace nordkeep
