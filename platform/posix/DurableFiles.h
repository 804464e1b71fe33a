#pragma once

#include "platform/DurableWrites.h"

#include <set>
#include <vector>

namespace nordkeep {

/// The files of the system's disks. What has been written stays open until it is synchronised.
class DurableFiles final : public DurableWrites {
 public:
    DurableFiles() = default;
    ~DurableFiles() override;
    DurableFiles(const DurableFiles&) = delete;
    DurableFiles& operator=(const DurableFiles&) = delete;

    bool Write(const NativePath& path, TextView bytes, Opening opening) override;
    bool Synchronise() override;
    const Text& LastError() const override { return lastError_; }
    bool IsEmpty() const { return open_.empty() && newFolders_.empty() && !hasFailed_; }

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
