#pragma once

#include "store/EventReading.h"

namespace nordkeep {

/// Records in the order of their arrival, those of one time in the order in which they came. Above its limit
/// the oldest leaves, which can be the one that has just come.
///
/// The result is that of inserting each record at its place; the sorting is done once at the end.
class ArrivalOrder {
 public:
    struct Item {
        std::int64_t arrivedMs = 0;
        std::size_t order = 0;
        std::unique_ptr<cAlarm> alarm{};
    };

    /// A limit below 1 is none.
    explicit ArrivalOrder(int limit) : limit_(limit < 1 ? 0 : static_cast<std::size_t>(limit)) {}

    /// Gives the record that had to leave, if any.
    std::unique_ptr<cAlarm> Insert(std::unique_ptr<cAlarm> alarm);
    /// Everything in order; nothing is left behind.
    std::vector<Item> Take();

 private:
    std::size_t limit_;
    std::size_t inserted_ = 0;
    std::vector<Item> items_{};  // with a limit a heap, the oldest in front
};

/// One reading of all event files into the list of records, at the start. While the program runs it is
/// EventReload.
class EventLoad {
 public:
    EventLoad(const StoreParts& parts, const StoreSettings& settings, EventList& events, EventFiles& files);
    void Run();
    /// Whether there is a file of an earlier version, which Run converts.
    static bool HasOldFile(const FileTree& dataFolder);

 private:
    void EmptyList();
    bool ConvertOldFile();
    void ConvertRecords(TextView content);
    void Convert(std::unique_ptr<cAlarm> alarm);
    void ReadFiles(const std::vector<EventFileName>& files);
    std::unique_ptr<cAlarm> ReadOne(const EventFileName& file);
    void TakeIn(std::unique_ptr<cAlarm> alarm);
    void Drop(cAlarm& alarm);
    void FillList();

    const StoreParts& parts_;
    const StoreSettings& settings_;
    EventList& events_;
    EventFiles& files_;
    EventReading reading_;
    ArrivalOrder tests_;
    ArrivalOrder ordinary_;
    std::map<std::int32_t, std::unique_ptr<cAlarm>> unsaved_{};  // newer in memory than in their files
    std::map<std::int32_t, std::unique_ptr<cAlarm>>
        converted_{};  // from the old file, on their way to their own
};

}  // namespace nordkeep
