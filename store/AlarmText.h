#pragma once

#include "platform/FileTree.h"
#include "runtime/Language.h"
#include "store/Alarm.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// A template with the pictures in which it prints dates.
struct AlarmFormat {
    TextView text{};
    TextView date{};
    TextView time{};
};

/// Values are those of a line, in which control characters from outside show as "?"; stored values are as
/// they stand in the record.
enum class HeaderMode { Values, StoredValues, Headings };

/// Makes every text line that shows a record.
class AlarmText {
 public:
    AlarmText(const FileTree& dataFolder, const Language& language)
        : dataFolder_(dataFolder), language_(language) {}

    /// The template with the record's values, or with the column headings, in place of the field names.
    Text BuildAlarmText(const AlarmFormat& format, const cAlarm& alarm,
                        HeaderMode mode = HeaderMode::Values) const;

 private:
    const FileTree& dataFolder_;
    const Language& language_;
};

/// A record for lines that are written without one: blank, with both its times set.
cAlarm BlankAlarm(OleDate now);

/// Field names have a fixed order; the number of a name, from 0, is its place there.
inline constexpr int kAlarmFieldCount = 43;
/// None for an unknown name; the case does not matter.
std::optional<int> AlarmFieldNumber(TextView name);
TextView AlarmFieldName(int number);
/// Language number of the field's column heading.
int AlarmFieldHeading(int number);

/// All field names in order, separated by commas: the columns of a list that names none.
Text DefaultColumns();
/// Field numbers of a comma-separated list of names: at most 43, up to the first empty name; unknown names
/// are left out.
std::vector<int> ParseColumns(TextView columns);

}  // namespace nordkeep
