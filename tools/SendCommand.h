#pragma once

#include "tools/Sender.h"

#include <CLI/CLI.hpp>
#include <string>

namespace nordkeep::tools {

/// What nordkeep-send is told.
struct SendCommand {
    SendOptions options{};
    std::string demo{};  // the folder of a demonstration centre that is fed instead
};

/// Declares the options of nordkeep-send, which fill in `command`; it is to outlive the reading.
void DeclareSend(CLI::App& app, SendCommand& command);

}  // namespace nordkeep::tools
