#include "console/AlarmLists.h"

namespace nordkeep {

void AlarmLists::UpdateAlarmLists(cAlarm& alarm) {
    if (alarm.m_Status == kStatusRemoved) return RemoveAlarmRow(alarm);
    const bool isAcked = alarm.m_Status == kStatusAcknowledged;
    (isAcked ? unacked_ : acked_).erase(alarm.m_FilePointer);
    std::unique_ptr<ListItem>& row = (isAcked ? acked_ : unacked_)[alarm.m_FilePointer];
    if (!row) row = std::make_unique<ListItem>(ListItem{.filePointer = alarm.m_FilePointer});
    const bool hasIcon = alarm.m_Status >= kStatusNew && alarm.m_Status <= kStatusAcknowledged;
    row->icon = hasIcon ? alarm.m_Status : kStatusNew;
    alarm.m_ListItem = row.get();
}

void AlarmLists::RemoveAlarmRow(cAlarm& alarm) {
    unacked_.erase(alarm.m_FilePointer);
    acked_.erase(alarm.m_FilePointer);
    alarm.m_ListItem = nullptr;
}

}  // namespace nordkeep
