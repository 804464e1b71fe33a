#pragma once

#include "platform/FileTree.h"
#include "platform/OleDate.h"

namespace nordkeep {

/// So many versions of a file are kept.
inline constexpr std::size_t kVersionsKept = 10;

/// Before a file of the folder Settings is written over: keeps it as "Settings\Backup\<name>.<time>", and of
/// all its versions the last ten. Does nothing for a file that is not there or lies elsewhere. False when the
/// version could not be kept.
bool KeepVersion(const FileTree& dataFolder, TextView path, OleDate now);

}  // namespace nordkeep
