#pragma once

#include "platform/Files.h"

#include <memory>

namespace nordkeep {

class FolderNames;

/// A folder of the real file system, below which names are found without regard to case.
///
/// Paths are written with "\" or "/" between their components. Each component is taken in its exact
/// spelling when that exists, else the case-blind match that sorts first; from the first component that
/// exists in no spelling on, the names stand as given, which is what a new file is made with.
class FileTree {
 public:
    explicit FileTree(NativePath root);

    const NativePath& Root() const { return root_; }
    /// Real path of `path` below the root. "." and empty components are skipped, ".." takes back the
    /// component before it and nothing at the root. A NUL makes the result a path that cannot exist.
    NativePath Resolve(TextView path) const;
    /// As Resolve, but a path that begins with a separator, or with a drive letter and ":", is absolute:
    /// the drive letter is dropped and the look-up starts at the root of the file system.
    NativePath ResolveSetting(TextView path) const;
    /// As Resolve, below another folder of the real file system.
    NativePath ResolveIn(const NativePath& folder, TextView path) const;

 private:
    NativePath root_;
    std::shared_ptr<FolderNames> names_;
};

/// True when a name that came from data (an ID code, a set, a type code) can stand as one path component:
/// not empty, not "." or "..", no separator and no NUL.
bool IsSafeComponent(TextView name);
/// A name from data made fit for a file: each of \ / : * ? " < > | and each character below 32 becomes "_",
/// blanks and dots at the end are cut, and an empty name becomes "_".
Text FileSafeName(TextView name);

}  // namespace nordkeep
