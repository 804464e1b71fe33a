#pragma once

#include "console/lists/RowModel.h"
#include "runtime/Settings.h"

#include <array>

namespace nordkeep {

/// How the colour pairs of the settings are put on the rows of alarms.
enum class AlarmColorBehaviour : int { None = 0, RowByStatus = 1, CellsByStatus = 2, RowByPriority = 3 };

struct AlarmColorSettings {
    AlarmColorBehaviour behaviour = AlarmColorBehaviour::None;
    std::array<CellColors, 10> pairs{};
};

/// "RRGGBB;RRGGBB", background and text. A text that is no pair is black on white; an empty one leaves the
/// theme.
CellColors ParseColorPair(TextView text);
/// Of the workstation's settings. `isSwitchedOff`: rows have no colours whatever the settings say.
AlarmColorSettings LoadAlarmColors(const Settings& files, bool isSwitchedOff);

/// What of a record and a cell bears on the cell's colours.
struct AlarmCellKind {
    int status = 0;
    TextView priority{};            // the value of the column that gives the priority
    bool isIconOrPriority = false;  // the cell is that of the icon or of a priority
};
CellColors ColorsOf(const AlarmColorSettings& settings, const AlarmCellKind& cell);

/// A colour number of the settings, red in its lowest byte; none for an empty or a negative one.
std::optional<Rgb> ParseColorNumber(TextView text);

}  // namespace nordkeep
