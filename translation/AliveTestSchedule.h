#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

namespace nordkeep {

/// What one step of an interval schedule lasts; seconds are for trials (/SPEEDUPALIVETEST).
enum class AliveTestPace { Minutes, Seconds };

/// False for an empty schedule and for one whose leading number is 0, unless it holds times of day.
bool IsScheduleInUse(TextView schedule);

/// What a person who wrote a schedule may have meant otherwise.
enum class ScheduleFlaw {
    None,
    Unreadable,   // or only in part: it is read leniently and does something else
    BehindEmpty,  // the list goes on behind an empty entry, where it ends
    LostOnSave,   // it begins with 00, and an editor leaves such a field empty
};
/// Times of day are "HH:MM" or "HH:MM:SS" up to 24:00:00, and windows of two of them in the order of the day.
ScheduleFlaw FlawOf(TextView schedule);

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
