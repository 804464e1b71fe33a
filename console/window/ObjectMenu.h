#pragma once

#include "console/lists/Captions.h"
#include "console/lists/CodeTexts.h"
#include "translation/ServicePeriods.h"

#include <vector>

namespace nordkeep {

/// The popup of an object.
struct ObjectMenu {
    /// An item of "log only": its number, as the command takes it, and its caption.
    struct LogOnlyItem {
        int item = 0;
        Text caption{};
        bool isChecked = false;
    };

    Text service{};  // of the submenu, with the present mode
    int mode = 0;
    std::vector<LogOnlyItem> logOnly{};
    Text edit{};
};

/// As runtime/ObjectFiles.h has it; empty also without a set.
Text ObjectInfoFile(const Text& set, const Text& idCode);

/// The items of "log only": the lengths of the setting ServiceIntervals, and last around the clock. What is
/// no number above 0 has no item.
std::vector<ObjectMenu::LogOnlyItem> LogOnlyItems(const Captions& captions, TextView ServiceIntervals);

}  // namespace nordkeep
