#pragma once

#include "pipeline/Dispatcher.h"
#include "pipeline/Resets.h"

#include <memory>
#include <vector>

namespace nordkeep {

/// Events that may be resets of alarms that have not arrived yet. They are in memory only: not stored, not
/// shown, and lost in a crash.
class ParkedEvents {
 public:
    ParkedEvents(Resets& resets, Dispatcher& dispatcher, const ResetSettings& settings)
        : resets_(resets), dispatcher_(dispatcher), settings_(settings) {}

    void Add(std::unique_ptr<cAlarm> alarm) { parked_.push_back(std::move(alarm)); }
    bool IsEmpty() const { return parked_.empty(); }

    /// Dispatches, in order, each entry that now resets an alarm.
    void DispatchMatched();
    /// As DispatchMatched, and dispatches entries that have waited too long as ordinary events.
    void Tick(OleDate now);
    /// Dispatches everything, at a clean stop, so that nothing is lost.
    void DispatchAll();

 private:
    template <class IsDue>
    void Walk(IsDue isDue);

    Resets& resets_;
    Dispatcher& dispatcher_;
    const ResetSettings& settings_;
    std::vector<std::unique_ptr<cAlarm>> parked_{};
};

}  // namespace nordkeep
