#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// A date by a picture, in a fixed locale.
///
/// Letters of any case: YYYY YY, MM M, DD D, HH H (0 to 23), NN N minutes, SS S; a doubled letter pads with a
/// zero. M or MM directly behind H or HH, with no other letter between, means minutes. "/" prints "-", text
/// in double quotes and the character behind a backslash stand as they are, and so does everything else.
/// Names, in any case: "Short Date", "Long Date", "Medium Date" (YYYY-MM-DD), "Long Time" (HH:NN:SS),
/// "Short Time", "Medium Time" (HH:NN); "General Date" and the empty picture give GeneralDate.
Text FormatDate(OleDate date, TextView picture);

/// "YYYY-MM-DD HH:NN:SS"; only the date when the time is midnight, only the time on day 0.
Text GeneralDate(OleDate date);

/// The 14 digits YYYYMMDDHHNNSS; never (0) is 18991230000000.
Text CompactTime(OleDate date);
/// Reads CompactTime leniently: missing or odd digits count as 0, and what is no date at all is never.
OleDate ParseCompactTime(TextView digits);

/// "YYYY?MM?DD?HH?NN?SS" by position, any separator; none when a number is missing or out of range.
/// Hour, minute and second may be left away from the end.
std::optional<OleDate> ParseDateTime(TextView text);

}  // namespace nordkeep
