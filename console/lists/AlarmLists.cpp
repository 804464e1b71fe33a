#include "console/lists/AlarmLists.h"

#include <algorithm>

namespace nordkeep {

namespace {

bool IsNew(const cAlarm& alarm) {
    return alarm.m_Status == kStatusNew || alarm.m_Status == kStatusNewWaiting;
}

}  // namespace

void AlarmLists::Attach(Looks looks) {
    looks_ = std::move(looks);
    unacked_.SetLooks(&looks_.rows, looks_.unacked);
    acked_.SetLooks(&looks_.rows, looks_.acked);
}

void AlarmLists::RenewColors(AlarmColorSettings colors, bool hasToolTips) {
    looks_.rows.colors = std::move(colors);
    looks_.rows.hasToolTips = hasToolTips;
    unacked_.MarkAll();
    acked_.MarkAll();
}

void AlarmLists::UpdateAlarmLists(cAlarm& alarm) {
    if (alarm.m_Status == kStatusRemoved) return RemoveAlarmRow(alarm);
    const bool isAcked = alarm.m_Status == kStatusAcknowledged;
    (isAcked ? unacked_ : acked_).Remove(alarm.m_FilePointer);
    // What is read at the start has been seen by somebody before.
    unacked_.MarkNewUnread(bulkDepth_ == 0 && IsNew(alarm));
    alarm.m_ListItem = &(isAcked ? acked_ : unacked_).Update(alarm);
    NoteUnhandled(alarm, IsNew(alarm));
}

void AlarmLists::RemoveAlarmRow(cAlarm& alarm) {
    unacked_.Remove(alarm.m_FilePointer);
    acked_.Remove(alarm.m_FilePointer);
    alarm.m_ListItem = nullptr;
    NoteUnhandled(alarm, false);
}

void AlarmLists::NoteUnhandled(const cAlarm& alarm, bool isUnhandled) {
    const auto known = arrivals_.find(alarm.m_FilePointer);
    if (known != arrivals_.end()) {
        unhandled_.erase({known->second, alarm.m_FilePointer});
        arrivals_.erase(known);
    }
    if (!isUnhandled) return;
    // An event that came before its arrival was kept has the time of its sender.
    const OleDate came = alarm.m_ArrivedTime.IsNever() ? alarm.m_TimeStamp : alarm.m_ArrivedTime;
    unhandled_.emplace(came.Milliseconds(), alarm.m_FilePointer);
    arrivals_.emplace(alarm.m_FilePointer, came.Milliseconds());
}

OleDate AlarmLists::OldestUnhandled() const {
    return unhandled_.empty() ? OleDate() : OleDate::FromMilliseconds(unhandled_.begin()->first);
}

int AlarmLists::CountUntouched(OleDate now, const Patience& patience) const {
    // More than this nobody counts.
    constexpr int kMost = 1000;
    int count = 0;
    for (const auto& [arrivedMs, filePointer] : unhandled_) {
        const int priority = std::clamp(unacked_.PriorityOf(filePointer), 0, 3);
        const int seconds = patience[static_cast<std::size_t>(priority < 1 ? 2 : priority - 1)];
        if (seconds > 0 && now.Milliseconds() - arrivedMs >= seconds * std::int64_t{1000}) ++count;
        if (count == kMost) break;
    }
    return count;
}

void AlarmLists::EndBulkLoad() {
    if (bulkDepth_ > 0) --bulkDepth_;
    if (bulkDepth_ > 0) return;
    unacked_.MarkAll();
    acked_.MarkAll();
    loadPercent_ = 0;
}

void AlarmLists::Flush() {
    if (bulkDepth_ > 0) return;
    if (looks_.rows.cells) looks_.rows.cells->ForgetFiles();
    unacked_.Flush();
    acked_.Flush();
}

}  // namespace nordkeep
