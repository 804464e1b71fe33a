#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

namespace nordkeep {

/// What one step of an interval schedule lasts; seconds are for trials (/SPEEDUPALIVETEST).
enum class AliveTestPace { Minutes, Seconds };

/// False for an empty schedule and for one whose leading number is 0, unless it holds times of day.
bool IsScheduleInUse(TextView schedule);

/// When an object that was heard from at `heard` must be heard from again at the latest.
///
/// A schedule without ":" is a number of minutes. Otherwise it is a list of "HH:MM:SS" (a deadline) and
/// "HH:MM:SS-HH:MM:SS" (a window that ends in a deadline), separated by commas, up to the first empty entry.
/// Whoever reports after the last deadline of a day has reported for the first deadline of the next one.
/// Never when the list has no valid entry.
OleDate NextDeadline(TextView schedule, OleDate heard, AliveTestPace pace);

/// The schedule as the console shows it: times of day as they stand, minutes as "days/HH:MM (minutes unit)".
Text ReadableSchedule(TextView schedule, TextView unit);

}  // namespace nordkeep
