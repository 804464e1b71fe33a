#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"
#include "translation/Translate.h"

#include <vector>

namespace nordkeep {

/// One line of a .LastEvents file: the state of supervision of an object, over a restart.
struct LastEventsLine {
    Text idCode{};
    OleDate lastIncomingEvent{};
    OleDate expiration{};
    bool hasFailed = false;
    int serviceMode = 0;
    OleDate servicePeriodBegin{};
    OleDate servicePeriodEnd{};
    OleDate expiration2{};
    bool hasFailed2 = false;
};

/// One line for each object that has a test in use, a last event or a service mode.
Text WriteLastEvents(const cTranslate& set);
/// Missing and malformed fields are never, 0 or false.
std::vector<LastEventsLine> ReadLastEvents(TextView content);

/// Place of a set's file below the data folder, and what all such files fit.
Text LastEventsFileName(TextView set);
inline constexpr TextView kLastEventsFolder = "Data";
inline constexpr TextView kLastEventsMask = "*.LastEvents";

}  // namespace nordkeep
