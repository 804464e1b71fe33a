#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace nordkeep {

/// Declares the words of NKCopy: the name of the file that lines are moved to.
void DeclareCopy(CLI::App& app, std::string& target);

}  // namespace nordkeep
