#pragma once

#include "store/ActiveAlarms.h"

#include <map>
#include <memory>
#include <set>

namespace nordkeep {

/// Owns all records, in the order of their sequence numbers, with the indexes that are asked for them.
class EventList {
 public:
    /// Adds the record at the end.
    EventSequence Append(std::unique_ptr<cAlarm> alarm, bool isTestAlarm);
    /// Adds the record in front of another one, `next`; at the end when that is not there.
    EventSequence InsertBefore(EventSequence next, std::unique_ptr<cAlarm> alarm, bool isTestAlarm);
    /// Takes the record out; none when it is not there.
    std::unique_ptr<cAlarm> TakeOut(EventSequence sequence);
    void Clear();
    /// To be called whenever a record's status, priority, codes or file number may have changed.
    void Reindex(EventSequence sequence, bool isTestAlarm);

    std::size_t Count() const { return entries_.size(); }
    /// How many records have each status.
    const std::map<int, std::size_t>& CountsByStatus() const { return countsByStatus_; }
    cAlarm* Find(EventSequence sequence) const;
    /// The number of a record; 0 for one that is not in the list.
    EventSequence SequenceOf(const cAlarm& alarm) const;
    /// The number of the last record that was added at the end.
    EventSequence Last() const { return last_; }
    /// The first record with this file number; 0 without one.
    EventSequence FindFilePointer(std::int32_t filePointer) const;
    /// The next record behind `sequence` (0 for the first), 0 at the end. Records may come and go in between.
    EventSequence Next(EventSequence sequence) const;

    const ActiveAlarms& Active() const { return active_; }
    /// Records with a status other than acknowledged and removed.
    const std::set<EventSequence>& Unacknowledged() const { return unacknowledged_; }
    /// Records whose reset has been received.
    const std::set<EventSequence>& ResetReceived() const { return resetReceived_; }
    const std::set<EventSequence>& TestAlarms() const { return testAlarms_; }
    const std::set<EventSequence>& OrdinaryAlarms() const { return ordinaryAlarms_; }

 private:
    struct Entry {
        std::unique_ptr<cAlarm> alarm;
        std::int32_t indexedPointer = 0;
        int indexedStatus = 0;
    };

    EventSequence Add(EventSequence sequence, std::unique_ptr<cAlarm> alarm, bool isTestAlarm);
    void UnlinkFrom(EventSequence sequence);

    std::map<EventSequence, Entry> entries_{};
    std::unordered_map<const cAlarm*, EventSequence> sequences_{};
    std::set<std::pair<std::int32_t, EventSequence>> byPointer_{};
    std::map<int, std::size_t> countsByStatus_{};
    ActiveAlarms active_{};
    std::set<EventSequence> unacknowledged_{};
    std::set<EventSequence> resetReceived_{};
    std::set<EventSequence> testAlarms_{};
    std::set<EventSequence> ordinaryAlarms_{};
    EventSequence last_ = 0;
};

}  // namespace nordkeep
