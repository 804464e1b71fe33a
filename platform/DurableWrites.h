#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// Writes files so that they survive a power cut, with one synchronisation for many files.
///
/// Write and Remove put a change into the system's hands; Synchronise then waits until it, and the folder it
/// is in, are on the medium. Until then nothing is promised.
class DurableWrites {
 public:
    virtual ~DurableWrites() = default;

    enum class Opening { CreateNew, Existing };

    /// Writes `bytes` from the start of the file, which is never shortened. CreateNew fails when the file
    /// exists; Existing makes a missing file too. False, with LastError, when it could not be written.
    virtual bool Write(const NativePath& path, TextView bytes, Opening opening) = 0;
    /// Appends with one write, making the file when missing. False, with LastError, when it could not be
    /// written.
    virtual bool Append(const NativePath& path, TextView bytes) = 0;
    /// Deletes the file; one that is not there is no failure.
    virtual bool Remove(const NativePath& path) = 0;
    /// The names in a folder, changed by somebody else, are to be synchronised with the rest.
    virtual void AddFolder(const NativePath& folder) = 0;
    /// Waits for the oldest changes, at most so many files, and for the folders when no file is left. False,
    /// with LastError, when any of it may be lost.
    virtual bool Synchronise(std::size_t most) = 0;
    /// Files and folders that are still to be synchronised.
    virtual std::size_t WaitingCount() const = 0;
    /// The system's description of the last failure.
    virtual const Text& LastError() const = 0;
};

}  // namespace nordkeep
