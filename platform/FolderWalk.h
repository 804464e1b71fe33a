#pragma once

#include "platform/Files.h"

#include <memory>
#include <optional>

namespace nordkeep {

/// The names in a folder one after the other, for work that is done in slices. What comes or goes between two
/// calls may be met or not; whatever stays is met once.
class FolderWalk {
 public:
    explicit FolderWalk(const NativePath& folder);
    ~FolderWalk();
    FolderWalk(const FolderWalk&) = delete;
    FolderWalk& operator=(const FolderWalk&) = delete;

    /// False for a folder that cannot be read.
    bool IsOpen() const { return open_ != nullptr; }
    /// In Windows-1252, in the order of the file system; none at the end. A name that has no form in
    /// Windows-1252 is left out.
    std::optional<Text> Next();

 private:
    struct Open;
    std::unique_ptr<Open> open_;
};

}  // namespace nordkeep
