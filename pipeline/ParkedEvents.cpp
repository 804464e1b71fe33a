#include "pipeline/ParkedEvents.h"

namespace nordkeep {

// By index, since a dispatch can bring further events in and walk the list itself.
template <class IsDue>
void ParkedEvents::Walk(IsDue isDue) {
    for (std::size_t index = 0; index < parked_.size();) {
        if (!resets_.ResolveResets(*parked_[index]) && !isDue(*parked_[index])) {
            ++index;
            continue;
        }
        std::unique_ptr<cAlarm> alarm = std::move(parked_[index]);
        parked_.erase(parked_.begin() + static_cast<std::ptrdiff_t>(index));
        dispatcher_.DispatchEvent(std::move(alarm));
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
