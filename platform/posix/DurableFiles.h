#pragma once

#include "platform/DurableWrites.h"

#include <list>
#include <set>
#include <unordered_map>

namespace nordkeep {

/// The files of the system's disks. What has been written stays open until it is synchronised, as long as
/// that are not too many.
class DurableFiles final : public DurableWrites {
 public:
    DurableFiles() = default;
    ~DurableFiles() override;
    DurableFiles(const DurableFiles&) = delete;
    DurableFiles& operator=(const DurableFiles&) = delete;

    bool Write(const NativePath& path, TextView bytes, Opening opening) override;
    bool Append(const NativePath& path, TextView bytes) override;
    bool Remove(const NativePath& path) override;
    void AddFolder(const NativePath& folder) override { changedFolders_.insert(folder + "/"); }
    bool Synchronise(std::size_t most) override;
    std::size_t WaitingCount() const override { return waiting_.size() + changedFolders_.size(); }
    const Text& LastError() const override { return lastError_; }

 private:
    struct WaitingFile {
        int descriptor = -1;  // -1: to be opened again
        NativePath path{};
    };

    int OpenExisting(const NativePath& path, bool& isNew);
    void KeepWaiting(int descriptor, const NativePath& path, bool isNew);
    bool Fail(const char* operation, const NativePath& path);
    void SetGoing(std::size_t count);
    bool SynchroniseFile(WaitingFile& file);
    bool SynchroniseFolders();

    std::list<WaitingFile> waiting_{};  // the oldest in front
    std::unordered_map<NativePath, std::list<WaitingFile>::iterator> places_{};
    std::size_t openCount_ = 0;
    std::set<NativePath> changedFolders_{};  // folders whose entries are still to be synchronised
    Text lastError_{};
};

}  // namespace nordkeep
