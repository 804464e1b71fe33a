#pragma once

#include "platform/OleDate.h"

#include <cstdint>

namespace nordkeep {

/// One periodic tick of a port, as its format sees it.
struct ServiceTick {
    OleDate now{};
    std::int64_t monotonicMs = 0;  // for elapsed times, which a change of the clock must not bend
    int tickMs = 0;
    bool isOpen = false;           // the line can be reached from the other end
    bool canSend = false;          // the line is open and somebody is at its other end
    bool isClockWanted = false;    // an operator wants the clock of the far end set now
    bool isProgramEnding = false;  // what still waits is due now
};

}  // namespace nordkeep
