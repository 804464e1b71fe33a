#pragma once

namespace nordkeep {

struct IncomingEvent;

/// The one door through which every event enters the system.
class EventIntake {
 public:
    virtual ~EventIntake() = default;
    virtual void HandleIncomingEvent(const IncomingEvent& event) = 0;
};

}  // namespace nordkeep
