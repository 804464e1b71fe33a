#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace nordkeep {

/// What nordkeep-export is told.
struct ExportCommand {
    std::string source{};
    std::string target{};
    std::string token{};
    bool isOnce = false;
};

/// Declares its options, which fill in `command`; it is to outlive the reading.
void DeclareExport(CLI::App& app, ExportCommand& command);

}  // namespace nordkeep
