#include "console/lists/ListColumns.h"

#include "runtime/Fields.h"
#include "store/AlarmText.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace nordkeep {
namespace {

constexpr int kWidest = 4000;
constexpr int kWidthOfALostColumn = 40;

int PlaceOf(const std::vector<int>& fields, TextView name) {
    const auto at = std::ranges::find(fields, AlarmFieldNumber(name).value_or(-1));
    return at == fields.end() ? -1 : static_cast<int>(at - fields.begin());
}

}  // namespace

AlarmColumns LoadAlarmColumns(const Settings& files, TextView section) {
    AlarmColumns columns;
    Text names;
    for (const Text& name : Split(files.ReadIni(section, "Columns", DefaultColumns()), ',')) {
        names.append(TrimBlanksAndTabs(name)).append(1, ',');
    }
    columns.fields = ParseColumns(names);
    columns.priorityColumn = PlaceOf(columns.fields, "TRPRIO");
    if (columns.priorityColumn < 0) columns.priorityColumn = PlaceOf(columns.fields, "PRIO");
    columns.doubleClickShowsMap = IsTrue(files.ReadIni(section, "DoubleClickShowsMap", "0"));
    return columns;
}

ColumnWidths::ColumnWidths(Settings& files, TextView section, int least)
    : files_(files), section_(section), least_(std::clamp(least, 0, kWidest)) {}

int ColumnWidths::Width(int column, int byDefault) const {
    const Text stored = files_.ReadIni(section_, KeyOf(column), std::to_string(byDefault));
    const int width = LeadingInt32(stored);
    // A column of no width could never be found again.
    return std::clamp(width <= 0 ? kWidthOfALostColumn : width, least_, kWidest);
}

void ColumnWidths::Store(int column, int width) {
    const Text text = std::to_string(std::clamp(width, std::max(least_, 1), kWidest));
    if (files_.ReadIni(section_, KeyOf(column), "") != text) files_.WriteIni(section_, KeyOf(column), text);
}

Sorting ColumnWidths::StoredSorting() const {
    const int number = LeadingInt32(files_.ReadIni(section_, kSortedByKey, "0"));
    if (number == 0 || number == std::numeric_limits<int>::min()) return {};
    return {std::abs(number) - 1, number > 0 ? SortDirection::Ascending : SortDirection::Descending};
}

void ColumnWidths::Store(Sorting sorting) {
    const int number = sorting.column + 1;
    const bool isDown = sorting.direction == SortDirection::Descending;
    files_.WriteIni(section_, kSortedByKey, std::to_string(isDown ? -number : number));
}

}  // namespace nordkeep
