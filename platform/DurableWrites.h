#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// Writes files so that they survive a power cut, with one synchronisation for many files.
///
/// Write puts the bytes into the system's hands; Synchronise then waits until all of them, and the folders of
/// the new ones, are on the medium. Until Synchronise has returned nothing is promised.
class DurableWrites {
 public:
    virtual ~DurableWrites() = default;

    enum class Opening { CreateNew, Existing };

    /// Writes `bytes` from the start of the file, which is never shortened. CreateNew fails when the file
    /// exists; Existing makes a missing file too. False, with LastError, when it could not be written.
    virtual bool Write(const NativePath& path, TextView bytes, Opening opening) = 0;
    /// Waits for everything written since the last call. False, with LastError, when any of it may be lost.
    virtual bool Synchronise() = 0;
    /// The system's description of the last failure.
    virtual const Text& LastError() const = 0;
};

}  // namespace nordkeep
