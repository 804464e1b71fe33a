#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// Marks a folder as worked in by this process, for as long as the object lives. The system frees the mark
/// when the process ends, however it ends.
class FolderLock {
 public:
    enum class Outcome {
        Held,
        HeldByAnother,
        Failed  // the lock file could not be made
    };

    explicit FolderLock(const NativePath& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    Outcome Result() const { return outcome_; }

 private:
    int descriptor_ = -1;
    Outcome outcome_ = Outcome::Failed;
};

}  // namespace nordkeep
