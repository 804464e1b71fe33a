#pragma once

#include "platform/Files.h"

#include <memory>

namespace nordkeep {

class FolderNames;

/// Knows whether a name still stands for the file that it stood for when this was made. A name of which the
/// system does not tell, and one that nobody has asked for, stands for nothing.
class NameHold {
 public:
    NameHold() = default;
    NameHold(std::shared_ptr<FolderNames> names, std::shared_ptr<const bool> isSame)
        : names_(std::move(names)), isSame_(std::move(isSame)) {}
    /// False where the system tells nothing.
    bool IsKnown() const { return isSame_ != nullptr; }
    bool Stands() const;
    /// Takes a new look, also within a Moment.
    void LookAgain() const;

 private:
    std::shared_ptr<FolderNames> names_{};
    std::shared_ptr<const bool> isSame_{};
};

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
    /// The same for what is there; else none.
    std::optional<NativePath> Find(TextView path) const;
    /// As Resolve, but a path that begins with a separator, or with a drive letter and ":", is absolute:
    /// the drive letter is dropped and the look-up starts at the root of the file system.
    NativePath ResolveSetting(TextView path) const;
    /// As Resolve, below another folder of the real file system.
    NativePath ResolveIn(const NativePath& folder, TextView path) const;

    /// While one exists, what is below the root is taken to stay as it was found at its begin, or when it has
    /// become older than some milliseconds, at the last look. Around work that asks for many files and has no
    /// use for changes that come in its midst. What the program itself makes meanwhile it makes under the
    /// name that it has asked for, so nothing is wrong about it.
    class Moment {
     public:
        explicit Moment(const FileTree& tree);
        ~Moment();
        Moment(const Moment&) = delete;
        Moment& operator=(const Moment&) = delete;

     private:
        std::shared_ptr<FolderNames> names_;
    };
    /// Tells one look of a Moment from another; 0 when there is no Moment.
    std::uint64_t PresentLook() const;
    /// For a file that stays open: asks to be told when the name stands for another one. The path is one that
    /// Resolve has given.
    NameHold Hold(const NativePath& path) const;

 private:
    struct Found {
        NativePath path{};
        bool isThere = true;
    };
    Found FindIn(const NativePath& folder, TextView path) const;
    bool IsOwn(const NativePath& folder) const;

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
