#pragma once

#include "platform/Files.h"

#include <set>
#include <vector>

namespace nordkeep {

/// Writes files so that they survive a power cut, with one synchronisation for many files.
///
/// Write puts the bytes into the system's hands and keeps the file open; Synchronise then waits until all of
/// them, and the folders of the new ones, are on the medium. Until Synchronise has returned nothing is
/// promised.
class DurableWrites {
 public:
    DurableWrites() = default;
    ~DurableWrites();
    DurableWrites(const DurableWrites&) = delete;
    DurableWrites& operator=(const DurableWrites&) = delete;

    enum class Opening { CreateNew, Existing };

    /// Writes `bytes` from the start of the file, which is never shortened. CreateNew fails when the file
    /// exists; Existing makes a missing file too. False, with LastError, when it could not be written.
    bool Write(const NativePath& path, TextView bytes, Opening opening);
    /// Waits for everything written since the last call. False, with LastError, when any of it may be lost.
    bool Synchronise();
    bool IsEmpty() const { return open_.empty() && newFolders_.empty() && !hasFailed_; }
    /// The system's description of the last failure.
    const Text& LastError() const { return lastError_; }

 private:
    struct OpenFile {
        int descriptor = -1;
        NativePath path{};
    };

    int OpenExisting(const NativePath& path, bool& isNew);
    int OpenNew(const NativePath& path);
    bool Fail(const char* operation, const NativePath& path);
    void SynchroniseFiles();
    void SynchroniseFolders();

    std::vector<OpenFile> open_{};
    std::set<NativePath> newFolders_{};  // folders with new files, whose entries are still to be synchronised
    bool hasFailed_ = false;             // a synchronisation since the last call of Synchronise
    Text lastError_{};
};

}  // namespace nordkeep
