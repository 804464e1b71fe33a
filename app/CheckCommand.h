#pragma once

#include "app/start/CommandLine.h"

namespace nordkeep {

/// `--check`: prints what is wrong with the files of a centre, a line for each, and how many there are. It
/// changes nothing and runs beside a running copy. The exit status: 0 without errors, 1 with, 2 when nothing
/// could be checked.
int RunCheckCommand(const CommandLine& commandLine);

/// A service is to work on the folder that it was told to work on or not at all. False, with a line on
/// standard error, when that cannot be had.
bool IsServiceFolderUsable(const CommandLine& commandLine);

}  // namespace nordkeep
