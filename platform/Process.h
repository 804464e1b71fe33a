#pragma once

#include "platform/Files.h"

#include <string>
#include <vector>

namespace nordkeep {

/// Starts a program that runs on by itself and is never waited for, in a folder of its own where one is
/// named. False when it cannot be started at all.
bool StartDetached(const NativePath& program, const std::vector<std::string>& arguments,
                   const NativePath& folder = {});

/// Lets this program have as many files and connections open as the system allows it.
void RaiseDescriptorLimit();

/// What this program makes from now on is not for other accounts: files 0640, folders 0750, or less where
/// whoever started it wants that.
void KeepFilesFromOthers();

/// A number that differs at every start of the program.
std::uint64_t StartSeed();

}  // namespace nordkeep
