#pragma once

#include "platform/Clock.h"
#include "runtime/Histogram.h"

namespace nordkeep {

/// How long things take on their way to the medium.
struct CommitTimes {
    const Clock& clock;
    Histogram acknowledgements{};  // from the begin of a telegram's intake until its reply may go
    Histogram commits{};           // of a turn of the loop that had something to keep
};

}  // namespace nordkeep
