#include "pipeline/ParkedEvents.h"

#include "store/RecordJson.h"

namespace nordkeep {
namespace {

constexpr TextView kWhat = "parked";

}  // namespace

void ParkedEvents::Add(std::unique_ptr<cAlarm> alarm) {
    JournalEntry entry = EntryOf(JournalKind::Waiting, *alarm);
    entry.data = WaitingRecordJson(*alarm, kWhat);
    const std::int64_t id = commit_.NoteWaiting(std::move(entry));
    parked_.push_back({std::move(alarm), id});
}

void ParkedEvents::TakeUp() {
    for (const WaitingEntry& waiting : commit_.WaitingEntries()) {
        auto alarm = ReadWaitingRecordJson(waiting.data, kWhat);
        if (alarm) parked_.push_back({std::make_unique<cAlarm>(std::move(*alarm)), waiting.id});
    }
}

// By index, since a dispatch can bring further events in and walk the list itself.
template <class IsDue>
void ParkedEvents::Walk(IsDue isDue) {
    for (std::size_t index = 0; index < parked_.size();) {
        cAlarm& waiting = *parked_[index].alarm;
        if (!resets_.ResolveResets(waiting) && !isDue(waiting)) {
            ++index;
            continue;
        }
        Parked parked = std::move(parked_[index]);
        parked_.erase(parked_.begin() + static_cast<std::ptrdiff_t>(index));
        commit_.NoteDone(parked.entry);
        dispatcher_.DispatchEvent(std::move(parked.alarm));
    }
}

void ParkedEvents::DispatchMatched() {
    Walk([](const cAlarm&) { return false; });
}

void ParkedEvents::Tick(OleDate now) {
    if (settings_.UnAssociatedResetEventsTimeout < 1) return;
    Walk([&](const cAlarm& alarm) {
        return alarm.m_ArrivedTime.PlusSeconds(settings_.UnAssociatedResetEventsTimeout) < now;
    });
}

void ParkedEvents::DispatchAll() {
    Walk([](const cAlarm&) { return true; });
}

}  // namespace nordkeep
