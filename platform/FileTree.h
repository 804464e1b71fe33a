#pragma once

#include "platform/Files.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// A folder of the real file system, below which names are found without regard to case.
///
/// Paths are written with "\" or "/" between their components. Each component is taken in its exact
/// spelling when that exists, else the case-blind match that sorts first; from the first component that
/// exists in no spelling on, the names stand as given, which is what a new file is made with.
class FileTree {
 public:
    explicit FileTree(NativePath root);

    const NativePath& Root() const { return root_; }
    /// Real path of `path` below the root. "." and empty components are skipped, ".." is kept in its place
    /// only when it stays below the root, else dropped. A NUL makes the result a name that cannot exist.
    NativePath Resolve(TextView path) const;
    /// As Resolve, but a path that begins with a separator, or with a drive letter and ":", is absolute:
    /// the drive letter is dropped and the look-up starts at the root of the file system.
    NativePath ResolveSetting(TextView path) const;

 private:
    struct Listing {
        std::int64_t folderModifiedNs = 0;
        bool isSettled = false;
        std::unordered_map<Text, std::string> actualNames{};  // upper case to the name on disk
    };

    NativePath ResolveBelow(const NativePath& start, TextView path) const;
    std::string FindEntry(const NativePath& folder, TextView name) const;
    const Listing& ListingOf(const NativePath& folder) const;

    NativePath root_;
    mutable std::unordered_map<NativePath, Listing> listings_{};
};

/// True when a name that came from data (an ID code, a set, a type code) can stand as one path component:
/// not empty, not "." or "..", no separator and no NUL.
bool IsSafeComponent(TextView name);
/// A name from data made fit for a file: each of \ / : * ? " < > | and each character below 32 becomes "_",
/// blanks and dots at the end are cut, and an empty name becomes "_".
Text FileSafeName(TextView name);

}  // namespace nordkeep
