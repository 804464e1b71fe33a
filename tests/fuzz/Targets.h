#pragma once

#include "platform/Text.h"

#include <vector>

namespace nordkeep {

/// A parser under fuzzing: it must survive any input. `seeds` are good inputs to start from.
struct FuzzTarget {
    const char* name;
    void (*run)(TextView input);
    std::vector<Text> seeds;
    /// Mutated inputs for each seed in the tests; fewer where an input costs disk writes.
    int neighbours = 3000;
};

/// All targets; the fuzz programs and the test over the seeds share them.
const std::vector<FuzzTarget>& FuzzTargets();

/// Those of files and settings, of the receiver lines, of mail and modems, and of what copies send each
/// other.
std::vector<FuzzTarget> FileTargets();
std::vector<FuzzTarget> LineTargets();
std::vector<FuzzTarget> TalkTargets();
std::vector<FuzzTarget> NetworkTargets();

/// What comes in on a line in the worked examples of a format, one text for each.
std::vector<Text> ExamplesOf(int messageFormat);

}  // namespace nordkeep
