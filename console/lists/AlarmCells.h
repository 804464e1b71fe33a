#pragma once

#include "console/lists/AlarmColors.h"
#include "console/lists/Captions.h"
#include "store/EventStore.h"

#include <map>
#include <memory>

namespace nordkeep {

/// How the cells of alarm lists are written.
struct AlarmCellFormats {
    Text date{};  // pictures of dates and times
    Text time{};
    bool isStatusNumber = false;  // the status as a number instead of a word
};

/// The texts of the cells of both alarm lists. Nothing is kept but what costs a file to read, and that only
/// until the next tick.
class AlarmCells {
 public:
    AlarmCells(const EventStore& store, const Captions& captions, AlarmCellFormats formats)
        : store_(store), captions_(captions), formats_(std::move(formats)) {}

    /// The record of a row; none when it has gone.
    const cAlarm* RecordOf(std::int32_t filePointer) const { return store_.FindAlarmByKey(filePointer); }
    /// The cell of a field (0 to 42).
    Text Cell(const cAlarm& alarm, int field) const;
    /// What the field sorts by; equal texts are equal cells.
    Text SortKey(const cAlarm& alarm, int field) const;
    /// The shown texts of these fields, upper case, for a search. What would have to be read from a file for
    /// each row is left out.
    Text SearchText(const cAlarm& alarm, const std::vector<int>& fields) const;
    /// All fields that hold something, "heading: value", a line for each.
    Text AllFields(const cAlarm& alarm) const;
    Text Heading(int field) const;
    Text StatusWord(int status) const;
    Text Build(TextView format, const cAlarm& alarm) const;
    /// What was read from files is read again.
    void ForgetFiles() const { fromFiles_.clear(); }

 private:
    Text PlainCell(const cAlarm& alarm, int field) const;
    Text FileCell(const cAlarm& alarm, int field) const;

    const EventStore& store_;
    const Captions& captions_;
    AlarmCellFormats formats_;
    mutable std::map<std::pair<std::int32_t, int>, Text> fromFiles_{};
};

}  // namespace nordkeep
