#include "pipeline/AlarmHandling.h"

#include <utility>

namespace nordkeep {

cAlarm* AlarmHandling::Find(std::int32_t filePointer) const {
    cAlarm* alarm = needs_.store.FindAlarmByKey(filePointer);
    return alarm && alarm->m_Status != kStatusRemoved ? alarm : nullptr;
}

void AlarmHandling::End(cAlarm& alarm, const std::optional<Text>& smallComment) {
    if (smallComment) alarm.m_SmallComment = *smallComment;
    alarm.m_Status = kStatusAcknowledged;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.Update(alarm);
    needs_.desk.AlarmEnded(alarm.m_FilePointer);
}

void AlarmHandling::EndSeveral(std::span<const std::int32_t> filePointers) {
    for (const std::int32_t filePointer : filePointers) {
        if (cAlarm* alarm = Find(filePointer)) End(*alarm);
    }
}

void AlarmHandling::EndAll() {
    needs_.views.BeginBulkLoad();
    // A copy, since an alarm that ends leaves the set.
    const auto& open = needs_.store.Events().Unacknowledged();
    for (const EventSequence sequence : std::vector<EventSequence>(open.begin(), open.end())) {
        if (cAlarm* alarm = needs_.store.Events().Find(sequence)) End(*alarm);
    }
    needs_.views.EndBulkLoad();
    needs_.desk.AllAlarmsEnded();
}

void AlarmHandling::Comment(cAlarm& alarm, const std::optional<Text>& smallComment) {
    if (alarm.m_Status == kStatusNew) alarm.m_Status = kStatusCommented;
    if (alarm.m_Status == kStatusNewWaiting) alarm.m_Status = kStatusCommentedWaiting;
    if (smallComment) alarm.m_SmallComment = *smallComment;
    needs_.store.Update(alarm);
}

void AlarmHandling::TakeSmallComment(cAlarm& alarm, const Text& smallComment) {
    alarm.m_SmallComment = smallComment;
    needs_.store.Update(alarm);
}

void AlarmHandling::Archive(std::span<const std::int32_t> filePointers) {
    for (const std::int32_t filePointer : filePointers) {
        if (cAlarm* alarm = Find(filePointer)) needs_.store.RemoveAlarm(*alarm);
    }
}

void AlarmHandling::EndByReset(cAlarm& alarm, AlarmStatus status) {
    alarm.m_Status = status;
    alarm.m_AckedTime = needs_.clock.Now();
    needs_.store.Update(alarm);
}

cAlarm AlarmHandling::TakeOver(cAlarm& alarm, cAlarm changed) {
    alarm = std::move(changed);
    needs_.store.Update(alarm);
    cAlarm left = alarm;
    if (alarm.m_Status == kStatusRemoved) {
        needs_.store.ArchiveToFile(alarm);
        needs_.store.Forget(alarm);
    }
    return left;
}

}  // namespace nordkeep
