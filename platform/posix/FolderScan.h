#pragma once

#include "platform/Files.h"

#include <functional>

namespace nordkeep {

/// One entry of a folder.
struct FolderEntry {
    std::string nameOnDisk;  // UTF-8
    Text name;               // the same in Windows-1252
    int descriptor;          // of the folder
    unsigned char type;      // as readdir tells it; may be DT_UNKNOWN
};

/// Shows every entry but "." and "..", in no order. Entries whose name has no form in Windows-1252 are left
/// out. False when the folder cannot be read.
bool ScanFolder(const NativePath& folder, const std::function<void(const FolderEntry&)>& show);

/// The Windows-1252 form of a name on disk; empty when there is none.
Text EntryName(std::string_view nameOnDisk);

}  // namespace nordkeep
