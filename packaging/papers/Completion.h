#pragma once

#include "packaging/papers/Words.h"

#include <string>

namespace nordkeep {

/// What the shell reads to complete the words of a program.
std::string BashCompletion(const Program& program);
std::string ZshCompletion(const Program& program);

}  // namespace nordkeep
