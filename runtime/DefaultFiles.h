#pragma once

#include "platform/FileTree.h"

namespace nordkeep {

/// For every file X.<templateExtension> of the program folder: copies it to Settings\X.<targetExtension> of
/// the data folder, unless that is there in any spelling.
void CopyDefaultFiles(const FileTree& programFolder, TextView templateExtension, const FileTree& dataFolder,
                      TextView targetExtension);

/// Gives the settings files of older installations their present names; nothing is overwritten.
void CarryOldNamesForward(const FileTree& dataFolder);

/// Makes the folder Settings ready: old names, and for a new installation the defaults of the program folder.
void PrepareSettingsFolder(const FileTree& programFolder, const FileTree& dataFolder);

}  // namespace nordkeep
