#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// Where the program's own files (languages, templates) are: its own folder, else the one for shared files
/// beside the folder of programs that it was installed into.
NativePath ProgramFilesFolder(const NativePath& programFile);

/// The data folder of a start without /PATH:. A program that lies among its own files works in its folder. An
/// installed one works in the machine's folder of states as a service, else in the user's own; so does one
/// with a window whose folder it may not write. Folders above it are made, the folder itself is not.
NativePath DefaultDataFolder(const NativePath& programFile, bool isService);

}  // namespace nordkeep
