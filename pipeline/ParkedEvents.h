#pragma once

#include "pipeline/Dispatcher.h"
#include "pipeline/Resets.h"

#include <memory>
#include <vector>

namespace nordkeep {

/// Events that may be resets of alarms that have not arrived yet. They are not stored and not shown; the
/// journal has them until they are dispatched, so that a crash loses none.
class ParkedEvents {
 public:
    ParkedEvents(EventCommit& commit, Resets& resets, Dispatcher& dispatcher, const ResetSettings& settings)
        : commit_(commit), resets_(resets), dispatcher_(dispatcher), settings_(settings) {}

    void Add(std::unique_ptr<cAlarm> alarm);
    /// Behind a crash: parks what was parked then.
    void TakeUp();
    bool IsEmpty() const { return parked_.empty(); }

    /// Dispatches, in order, each entry that now resets an alarm.
    void DispatchMatched();
    /// As DispatchMatched, and dispatches entries that have waited too long as ordinary events.
    void Tick(OleDate now);
    /// Dispatches everything, at a clean stop, so that nothing is lost.
    void DispatchAll();

 private:
    struct Parked {
        std::unique_ptr<cAlarm> alarm{};
        std::int64_t entry = 0;  // of the journal
    };

    template <class IsDue>
    void Walk(IsDue isDue);

    EventCommit& commit_;
    Resets& resets_;
    Dispatcher& dispatcher_;
    const ResetSettings& settings_;
    std::vector<Parked> parked_{};
};

}  // namespace nordkeep
