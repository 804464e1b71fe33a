#pragma once

#include "platform/Clock.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/TrafficLog.h"

namespace nordkeep {

/// How a port does at the moment.
enum class PortState {
    Open,
    Closed,    // it is to be open, and could not be opened
    Disabled,  // until a date
    Held,      // closed by hand
    Waiting,   // its settings let it be closed now: no dispatcher, no client
    Unusable,  // its settings make no port
};

struct PortFigures {
    PortState state = PortState::Unusable;
    OleDate since{};  // of the state
    OleDate lastTraffic{};
    int telegramsToday = 0;  // that brought events
    int refusedToday = 0;    // that were answered with a no
};

/// Counts what a port receives, anew each day.
class PortTally {
 public:
    explicit PortTally(const Clock& clock) : clock_(clock) {}

    void NoteState(PortState state);
    void NoteTraffic(TextView traffic, TrafficDirection direction);
    void NoteStep(const TelegramStep& step);
    PortFigures Figures() const;

 private:
    void Count(int& figure);

    const Clock& clock_;
    PortFigures figures_{};
    OleDate day_{};  // of the counts
};

}  // namespace nordkeep
