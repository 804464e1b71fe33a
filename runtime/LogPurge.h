#pragma once

#include "platform/FileTree.h"
#include "runtime/Role.h"

namespace nordkeep {

/// Removes the log and alarm files of this role, and the pages that no printer took, whose last change lies
/// more than `days` days before today; below 1 nothing is removed. Traffic files and subfolders stay.
void PurgeOldLogs(const FileTree& dataFolder, Role role, int days, OleDate now);

}  // namespace nordkeep
