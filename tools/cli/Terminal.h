#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

namespace nordkeep::tools {

// Exit statuses of all tools; they stay.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;    // what was to be done could not be, or not all of it
inline constexpr int kWrongUse = 2;  // the words behind the name make no sense; they are named
inline constexpr int kRefused = 3;   // there is no connection, and nothing was sent
inline constexpr int kNoAnswer = 4;  // sent, and nothing came back in time

/// The help of these statuses, for the end of a tool's --help.
inline constexpr const char* kStatusHelp =
    "Exit status: 0 done, 1 failed or refused in words, 2 wrong use, 3 no connection, 4 no answer in time.";

/// Gives a tool what all have: a name, --version, and help in their form. In front of its own options.
void PrepareTool(CLI::App& app, const std::string& name);
/// Reads the words behind the program's name. None to go on, else the exit status with which the program
/// ends: asked for help or the version, or a word that makes no sense, which has been named.
std::optional<int> ReadWords(CLI::App& app, int argc, char** argv);

}  // namespace nordkeep::tools
