#pragma once

#include "platform/FileTree.h"

#include <optional>

namespace nordkeep {

/// How a message means its path: the reads take a path with a ":" as absolute, everything else lies below the
/// data folder.
enum class PathKind { Read, BelowDataFolder };

/// A place that a client may touch: a canonical folder, and a name in it as it stands on disk (or as it was
/// given, when there is nothing of that name).
struct SharedPlace {
    NativePath folder{};
    NativePath path{};  // the name below the folder
};

/// The boundary of what clients reach: nothing outside the data folder and the folders that the operator of
/// the server has named, and never the file with the passwords.
class SharedPaths {
 public:
    /// `readableFolders`: ";"-separated, for absolute reads.
    SharedPaths(const FileTree& dataFolder, TextView readableFolders)
        : dataFolder_(dataFolder), readableFolders_(readableFolders) {}

    /// None for a path that leaves the boundary, whose folder does not exist, or whose last component is no
    /// name.
    std::optional<SharedPlace> Find(TextView path, PathKind kind) const;
    /// The canonical path of a folder below the data folder.
    std::optional<NativePath> FindFolder(TextView path) const;
    /// The names and passwords of the users, by whatever name.
    bool IsUsersFile(const NativePath& folder, const NativePath& path) const;

 private:
    bool IsShared(const NativePath& folder, bool isAbsolute) const;

    const FileTree& dataFolder_;
    Text readableFolders_;
};

}  // namespace nordkeep
