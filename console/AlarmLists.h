#pragma once

#include "store/Alarm.h"
#include "store/AlarmViews.h"

#include <memory>
#include <unordered_map>

namespace nordkeep {

/// One row of an alarm list.
struct ListItem {
    std::int32_t filePointer = 0;
    int icon = 0;  // the status, 0 to 5
};

/// The lists of new and of old alarms, by row key. They exist on every copy, also without a screen.
class AlarmLists final : public AlarmViews {
 public:
    void UpdateAlarmLists(cAlarm& alarm) override;
    void RemoveAlarmRow(cAlarm& alarm) override;
    void BeginBulkLoad() override {}
    void ShowLoadProgress(int) override {}
    void EndBulkLoad() override {}
    void RecalcStatusBars() override {}

    std::size_t UnackedCount() const { return unacked_.size(); }
    std::size_t AckedCount() const { return acked_.size(); }

 private:
    using Rows = std::unordered_map<std::int32_t, std::unique_ptr<ListItem>>;

    Rows unacked_{};
    Rows acked_{};
};

}  // namespace nordkeep
