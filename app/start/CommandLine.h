#pragma once

#include <optional>
#include <string>
#include <vector>

namespace nordkeep {

/// The switches of the command line. Texts are UTF-8, as the system hands them over.
struct CommandLine {
    std::optional<std::string> path{};  // /PATH: the data folder
    int delaySeconds = 0;               // /DELAY:
    bool runAsService = false;
    bool install = false;
    bool uninstall = false;
    bool topMost = false;
    bool maximize = false;
    bool minimize = false;
    bool simulate = false;
    bool noBackgroundColor = false;
    bool speedUpAliveTest = false;
    bool forceDisablePorts = false;
    bool askForDisablePorts = false;
    bool help = false;
    bool version = false;
    bool check = false;
    std::vector<std::string> unknown{};          // named, and the start goes on
    std::optional<std::string> unknownOption{};  // a word that begins with "-": nothing is started
};

/// Reads the words behind the program's name. A switch counts at the start of a word and directly behind
/// another switch; the value of /PATH: may hold blanks and slashes and runs up to the next complete switch.
/// All switches are found in any case but /RunAsService, which is exact. A word that begins with "-" is an
/// option and stands alone, also behind a path; "-" itself is a part of a path.
CommandLine ParseCommandLine(const std::vector<std::string>& words);

/// One word of the command line, as help, manual and completion tell it.
struct CommandLineWord {
    std::string names{};  // "/I", "/DELAY:N", "--version, -V"
    std::string help{};
};
std::vector<CommandLineWord> CommandLineWords();

/// What --help of the program of this name prints.
std::string CommandLineHelp(const char* program);

}  // namespace nordkeep
