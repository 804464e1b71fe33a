#pragma once

#include "pipeline/EventIntake.h"
#include "pipeline/IncomingEvent.h"

#include <functional>
#include <vector>

namespace nordkeep {

/// Keeps the events that ports hand in, and can act while one is taken in.
class RecordingIntake : public EventIntake {
 public:
    void HandleIncomingEvent(const IncomingEvent& event) override {
        events.push_back(event);
        if (during) during();
    }

    void HandleSignOfLife(const IncomingEvent& event) override { signs.push_back(event); }

    std::vector<IncomingEvent> events{};
    std::vector<IncomingEvent> signs{};
    std::function<void()> during{};
};

}  // namespace nordkeep
