#pragma once

#include "console/lists/Captions.h"
#include "console/print/PrintDocument.h"
#include "store/EventStore.h"

namespace nordkeep {

/// Which alarms come out on a page of their own as soon as they arrive; without both keys none.
struct AlarmPageSettings {
    Text PrioToPrint{};    // "low-high"; -1 is every priority
    Text StatusToPrint{};  // numbers, separated by commas
    Text Printer{};        // of all that comes out by itself; empty: the system's default
    bool PrintLastDayUnackedAutomatically = false;
    bool PrintLastDayAckedAutomatically = false;
};
std::span<const SettingRow<AlarmPageSettings>> AlarmPageSettingRows();

/// Alarms on paper.
class AlarmPrinting {
 public:
    struct Needs {
        const EventStore& store;
        const Captions& captions;
        const PrinterSettings& settings;
        const AlarmPageSettings& pageSettings;
        PrintOutput& output;
    };
    explicit AlarmPrinting(const Needs& needs) : needs_(needs) {}

    /// Shows the pages with one line for each row, before they are printed.
    void PrintRows(const Text& title, std::span<const std::int32_t> filePointers);
    /// The same lines, without paper.
    PrintDocument RowsDocument(const Text& title, std::span<const std::int32_t> filePointers) const;
    /// Prints the alarm on a page of its own if the settings say so.
    void PrintAlarmPage(const cAlarm& alarm);
    /// A day is over: prints its new and its old alarms, each if the settings say so.
    void PrintDay(OleDate day);

 private:
    bool IsToBePrinted(const cAlarm& alarm) const;
    void PrintDay(OleDate day, int listCaption, bool isOfOldAlarms);

    Needs needs_;
};

/// The format with the row's number in place of [NUMBER], in the range and width that stand there.
Text FillRowNumber(TextView format, std::size_t number);

}  // namespace nordkeep
