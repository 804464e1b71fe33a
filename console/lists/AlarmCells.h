#pragma once

#include "console/lists/AlarmColors.h"
#include "console/lists/Captions.h"
#include "platform/Clock.h"
#include "store/EventStore.h"

#include <map>
#include <memory>

namespace nordkeep {

/// How the cells of alarm lists are written.
struct AlarmCellFormats {
    Text date{};  // pictures of dates and times
    Text time{};
    bool isStatusNumber = false;   // the status as a number instead of a word
    const Clock* clock = nullptr;  // none: every day is shown like today
};

/// What cells had to read from files, kept until the next tick.
class FileTexts {
 public:
    /// The kept text of a record's field, else what `read` gives.
    template <class Read>
    const Text& Get(std::int32_t filePointer, int field, Read&& read) {
        if (texts_.size() > kMost) texts_.clear();
        const auto [known, isNew] = texts_.try_emplace({filePointer, field});
        if (isNew) known->second = read();
        return known->second;
    }
    void Forget() { texts_.clear(); }

 private:
    static constexpr std::size_t kMost = 2000;
    std::map<std::pair<std::int32_t, int>, Text> texts_{};
};

/// The texts of the cells of both alarm lists. Nothing is kept but what costs a file to read.
class AlarmCells {
 public:
    AlarmCells(const EventStore& store, const Captions& captions, FileTexts& fromFiles,
               AlarmCellFormats formats)
        : store_(store), captions_(captions), fromFiles_(fromFiles), formats_(std::move(formats)) {}

    /// The record of a row; none when it has gone.
    const cAlarm* RecordOf(std::int32_t filePointer) const { return store_.FindAlarmByKey(filePointer); }
    /// The cell of a field (0 to 42).
    Text Cell(const cAlarm& alarm, int field) const;
    /// The same of a time that stands without its date: what was before today has it in front.
    Text CellWithoutDate(const cAlarm& alarm, int field) const;
    /// The field of the date that belongs to a field of a time; -1 for any other field.
    static int DateFieldOf(int field);
    /// What the field sorts by; equal texts are equal cells.
    Text SortKey(const cAlarm& alarm, int field) const;
    /// The shown texts of these fields, upper case, for a search. What would have to be read from a file for
    /// each row is left out.
    Text SearchText(const cAlarm& alarm, const std::vector<int>& fields) const;
    /// What an operator asks of an alarm first, in at most five lines: whose, what, when, and what was done.
    Text ToolTip(const cAlarm& alarm) const;
    Text Heading(int field) const;
    Text StatusWord(int status) const;
    Text Build(TextView format, const cAlarm& alarm) const;
    /// What was read from files is read again.
    void ForgetFiles() const { fromFiles_.Forget(); }

 private:
    Text PlainCell(const cAlarm& alarm, int field) const;
    Text FileCell(const cAlarm& alarm, int field) const;

    const EventStore& store_;
    const Captions& captions_;
    FileTexts& fromFiles_;
    AlarmCellFormats formats_;
};

}  // namespace nordkeep
