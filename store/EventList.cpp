#include "store/EventList.h"

namespace nordkeep {
namespace {

void Keep(std::set<EventSequence>& set, EventSequence sequence, bool isMember) {
    if (isMember) {
        set.insert(sequence);
    } else {
        set.erase(sequence);
    }
}

}  // namespace

EventSequence EventList::Append(std::unique_ptr<cAlarm> alarm, bool isTestAlarm) {
    const EventSequence sequence = ++last_;
    const std::int32_t pointer = alarm->m_FilePointer;
    sequences_[alarm.get()] = sequence;
    byPointer_.insert({pointer, sequence});
    entries_.emplace_hint(entries_.end(), sequence, Entry{std::move(alarm), pointer});
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
    byPointer_.erase({found->second.indexedPointer, sequence});
    sequences_.erase(found->second.alarm.get());
    std::unique_ptr<cAlarm> alarm = std::move(found->second.alarm);
    entries_.erase(found);
    return alarm;
}

void EventList::Clear() {
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
