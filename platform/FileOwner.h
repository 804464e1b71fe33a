#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// Whose a file or folder is; names where the system knows them, else numbers.
struct FileOwner {
    std::string user = "root";
    std::string group = "root";
    bool isRoot = true;
};

/// The owner of a path; the system's administrator when there is nothing there.
FileOwner OwnerOf(const NativePath& path);

}  // namespace nordkeep
