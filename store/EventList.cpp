#include "store/EventList.h"

namespace nordkeep {
namespace {

// Room between two records for those that are found to stand there later.
constexpr EventSequence kStep = 1 << 20;

void Keep(std::set<EventSequence>& set, EventSequence sequence, bool isMember) {
    if (isMember) {
        set.insert(sequence);
    } else {
        set.erase(sequence);
    }
}

}  // namespace

EventSequence EventList::Append(std::unique_ptr<cAlarm> alarm, bool isTestAlarm) {
    last_ += kStep;
    return Add(last_, std::move(alarm), isTestAlarm);
}

EventSequence EventList::InsertBefore(EventSequence next, std::unique_ptr<cAlarm> alarm, bool isTestAlarm) {
    const auto at = entries_.find(next);
    if (at == entries_.end()) return Append(std::move(alarm), isTestAlarm);
    const EventSequence before = at == entries_.begin() ? 0 : std::prev(at)->first;
    // A place is filled from its front, so that it takes many.
    if (before + 1 == next) return Append(std::move(alarm), isTestAlarm);
    return Add(before + 1, std::move(alarm), isTestAlarm);
}

EventSequence EventList::Add(EventSequence sequence, std::unique_ptr<cAlarm> alarm, bool isTestAlarm) {
    const std::int32_t pointer = alarm->m_FilePointer;
    const int status = alarm->m_Status;
    sequences_[alarm.get()] = sequence;
    byPointer_.insert({pointer, sequence});
    entries_.emplace(sequence, Entry{std::move(alarm), pointer, status});
    ++countsByStatus_[status];
    Reindex(sequence, isTestAlarm);
    return sequence;
}

void EventList::Reindex(EventSequence sequence, bool isTestAlarm) {
    const auto found = entries_.find(sequence);
    if (found == entries_.end()) return;
    Entry& entry = found->second;
    const cAlarm& alarm = *entry.alarm;
    if (entry.indexedPointer != alarm.m_FilePointer) {
        byPointer_.erase({entry.indexedPointer, sequence});
        byPointer_.insert({alarm.m_FilePointer, sequence});
        entry.indexedPointer = alarm.m_FilePointer;
    }
    --countsByStatus_[entry.indexedStatus];
    ++countsByStatus_[entry.indexedStatus = alarm.m_Status];
    active_.Update(sequence, alarm);
    Keep(unacknowledged_, sequence, IsUnacknowledged(alarm));
    Keep(resetReceived_, sequence, alarm.m_Status == kStatusReset);
    Keep(testAlarms_, sequence, isTestAlarm);
    Keep(ordinaryAlarms_, sequence, !isTestAlarm);
}

void EventList::UnlinkFrom(EventSequence sequence) {
    active_.Remove(sequence);
    for (auto* set : {&unacknowledged_, &resetReceived_, &testAlarms_, &ordinaryAlarms_})
        set->erase(sequence);
}

std::unique_ptr<cAlarm> EventList::TakeOut(EventSequence sequence) {
    const auto found = entries_.find(sequence);
    if (found == entries_.end()) return nullptr;
    UnlinkFrom(sequence);
    --countsByStatus_[found->second.indexedStatus];
    byPointer_.erase({found->second.indexedPointer, sequence});
    sequences_.erase(found->second.alarm.get());
    std::unique_ptr<cAlarm> alarm = std::move(found->second.alarm);
    entries_.erase(found);
    return alarm;
}

void EventList::Clear() {
    countsByStatus_.clear();
    active_.Clear();
    for (auto* set : {&unacknowledged_, &resetReceived_, &testAlarms_, &ordinaryAlarms_}) set->clear();
    byPointer_.clear();
    sequences_.clear();
    entries_.clear();
}

cAlarm* EventList::Find(EventSequence sequence) const {
    const auto found = entries_.find(sequence);
    return found == entries_.end() ? nullptr : found->second.alarm.get();
}

EventSequence EventList::SequenceOf(const cAlarm& alarm) const {
    const auto found = sequences_.find(&alarm);
    return found == sequences_.end() ? 0 : found->second;
}

EventSequence EventList::FindFilePointer(std::int32_t filePointer) const {
    const auto found = byPointer_.lower_bound({filePointer, 0});
    return found == byPointer_.end() || found->first != filePointer ? 0 : found->second;
}

EventSequence EventList::Next(EventSequence sequence) const {
    const auto found = entries_.upper_bound(sequence);
    return found == entries_.end() ? 0 : found->first;
}

}  // namespace nordkeep
