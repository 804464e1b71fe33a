#pragma once

#include "store/Alarm.h"
#include "store/Journal.h"

#include <string>

namespace nordkeep {

/// A word for a status that programs can rely on.
const char* StatusName(int status);

/// An entry of the journal for other programs: one JSON object in UTF-8, without a line end.
std::string EntryJson(const JournalRow& row);

/// The columns of an entry as they stand in the journal, in the same form.
std::string RowJson(const JournalRow& row);

/// A record in its present state with the same members: `id` is its newest entry, `time` when it came, both
/// from the journal.
std::string AlarmJson(const cAlarm& alarm, std::int64_t id, const std::string& time);

}  // namespace nordkeep
