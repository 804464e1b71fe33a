#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// The file of the running program, all links resolved.
NativePath ProgramFile();
/// The folder of that file, without a separator at the end.
NativePath ProgramFolder();

}  // namespace nordkeep
