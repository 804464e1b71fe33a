#pragma once

#include "console/lists/RowModel.h"
#include "runtime/Settings.h"

#include <vector>

namespace nordkeep {

inline constexpr TextView kUnackedSection = "ListView_Unacked";
inline constexpr TextView kAckedSection = "ListView_Acked";
inline constexpr TextView kSysLogSection = "ListView_SysLog";
inline constexpr TextView kIdCodesSection = "ListView_IDCodes";
inline constexpr TextView kTypesSection = "ListView_Types";
inline constexpr TextView kDataCodesSection = "ListView_DataCodes";
inline constexpr TextView kLinesSection = "ListView_Lines";
/// Of each of them: the number of the column by which it is sorted, from 1, below 0 for descending, 0 for
/// none.
inline constexpr const char* kSortedByKey = "SortedBy";

/// The columns of an alarm list, of its own section of the workstation's settings.
struct AlarmColumns {
    std::vector<int> fields{};  // numbers of the fields of a record
    int priorityColumn = -1;    // place of TRPRIO, else of PRIO; -1 for neither
    bool doubleClickShowsMap = false;
};
AlarmColumns LoadAlarmColumns(const Settings& files, TextView section);

/// The widths of a list's columns, and how it is sorted; the column of the icon has none. They are kept from
/// one start to the next.
class ColumnWidths {
 public:
    /// `section` names the list. A column becomes no narrower than `least`.
    ColumnWidths(Settings& files, TextView section, int least);

    /// The stored width of column `column` (from 0), else `byDefault`.
    int Width(int column, int byDefault) const;
    /// Stores a width that differs from what is stored.
    void Store(int column, int width);
    int Least() const { return least_; }
    /// How the list was sorted the last time.
    Sorting StoredSorting() const;
    void Store(Sorting sorting);

 private:
    Text KeyOf(int column) const { return "Column" + std::to_string(column + 1); }

    Settings& files_;
    Text section_;
    int least_;
};

}  // namespace nordkeep
