#pragma once

#include "console/lists/Captions.h"
#include "runtime/Role.h"

#include <vector>

namespace nordkeep {

/// What the program tells about itself and this copy.
struct AboutText {
    Text title{};
    Text description{};
    std::vector<Text> lines{};
};
/// The number of the word for the mode of a copy.
int ModeText(Role role);
AboutText MakeAboutText(const Captions& captions, TextView version, TextView dataFolder, Role role);

}  // namespace nordkeep
