#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// The file of the running program, all links resolved.
NativePath ProgramFile();
/// The folder of that file, without a separator at the end.
NativePath ProgramFolder();

/// Whether this program may make files in the folder.
bool IsFolderWritable(const NativePath& folder);
/// Where the user's programs keep their data: $XDG_DATA_HOME, else .local/share of the home; made when
/// missing. Empty when there is no home.
NativePath UserDataFolder();

}  // namespace nordkeep
