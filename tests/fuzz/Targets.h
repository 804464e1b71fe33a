#pragma once

#include "platform/Text.h"

#include <vector>

namespace nordkeep {

/// A parser under fuzzing: it must survive any input. `seeds` are good inputs to start from.
struct FuzzTarget {
    const char* name;
    void (*run)(TextView input);
    std::vector<Text> seeds;
    int neighbours =
        3000;  // mutated inputs for each seed in the tests; fewer where an input costs disk writes
};

/// What copies send each other.
std::vector<FuzzTarget> NetworkTargets();

/// All targets; the fuzz programs and the test over the seeds share them.
const std::vector<FuzzTarget>& FuzzTargets();

}  // namespace nordkeep
