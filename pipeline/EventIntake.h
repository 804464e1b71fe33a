#pragma once

namespace nordkeep {

struct IncomingEvent;

/// The one door through which every event enters the system.
class EventIntake {
 public:
    virtual ~EventIntake() = default;
    virtual void HandleIncomingEvent(const IncomingEvent& event) = 0;
    /// A sender lives and has nothing to tell: the alive tests of its object are fed, as by an event of it.
    /// `event` is such a one.
    virtual void HandleSignOfLife(const IncomingEvent& event) = 0;
};

}  // namespace nordkeep
