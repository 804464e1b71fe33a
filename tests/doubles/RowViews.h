#pragma once

#include "store/Alarm.h"
#include "store/AlarmViews.h"

#include <algorithm>
#include <map>

namespace nordkeep {

/// The rows of the two lists: the status that each record shows, by its number.
class RowViews final : public AlarmViews {
 public:
    void UpdateAlarmLists(cAlarm& alarm) override {
        if (alarm.m_Status == kStatusRemoved) return RemoveAlarmRow(alarm);
        rows[alarm.m_FilePointer] = alarm.m_Status;
    }
    void RemoveAlarmRow(cAlarm& alarm) override { rows.erase(alarm.m_FilePointer); }
    void BeginBulkLoad() override {}
    void ShowLoadProgress(int) override {}
    void EndBulkLoad() override {}

    std::size_t AckedCount() const {
        return static_cast<std::size_t>(
            std::ranges::count_if(rows, [](const auto& row) { return row.second == kStatusAcknowledged; }));
    }
    std::size_t UnackedCount() const { return rows.size() - AckedCount(); }

    std::map<std::int32_t, int> rows{};
};

}  // namespace nordkeep
