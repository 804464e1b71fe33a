#pragma once

namespace nordkeep {

struct cAlarm;

/// What the store tells the operator's lists. The lists are models and exist on every copy.
class AlarmViews {
 public:
    virtual ~AlarmViews() = default;
    /// Shows the record's present state: moves its row to the list of its status, adds a missing row, and
    /// takes the row out for status -1.
    virtual void UpdateAlarmLists(cAlarm& alarm) = 0;
    /// The record is about to leave the store: its row goes from whichever list it stands in.
    virtual void RemoveAlarmRow(cAlarm& alarm) = 0;
    /// Between the two the lists stay unsorted and show progress, 0 to 99 of 100.
    virtual void BeginBulkLoad() = 0;
    virtual void ShowLoadProgress(int percent) = 0;
    virtual void EndBulkLoad() = 0;
};

}  // namespace nordkeep
