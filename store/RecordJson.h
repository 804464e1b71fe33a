#pragma once

#include "store/Alarm.h"
#include "store/Journal.h"

#include <optional>
#include <string>
#include <string_view>

namespace nordkeep {

/// All fields of a record that its event file holds, as a JSON object. Dates are days since 1899-12-30 in
/// local time, with the same bits as in the record.
std::string RecordJson(const cAlarm& alarm);

/// The record of such an object; its file number and what files do not hold are as in a new record. None for
/// anything else.
std::optional<cAlarm> ReadRecordJson(std::string_view json);

/// The same with what files do not hold but a record in memory needs, for one that waits; `what` says for
/// what.
std::string WaitingRecordJson(const cAlarm& alarm, TextView what);
std::optional<cAlarm> ReadWaitingRecordJson(std::string_view json, TextView what);

/// An entry about a record, with its fields as data.
JournalEntry EntryOf(JournalKind kind, const cAlarm& alarm);

}  // namespace nordkeep
