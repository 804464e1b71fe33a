#pragma once

#include "platform/Text.h"

#include <vector>

namespace nordkeep {

/// A parser under fuzzing: it must survive any input. `seeds` are good inputs to start from.
struct FuzzTarget {
    const char* name;
    void (*run)(TextView input);
    std::vector<Text> seeds;
};

/// All targets; the fuzz programs and the test over the seeds share them.
const std::vector<FuzzTarget>& FuzzTargets();

}  // namespace nordkeep
