#pragma once

#include "platform/posix/DurableFiles.h"

#include <functional>

namespace nordkeep {

/// The real disk, at whose synchronisation something can happen.
class WatchedDisk final : public DurableWrites {
 public:
    bool Write(const NativePath& path, TextView bytes, Opening opening) override {
        return disk_.Write(path, bytes, opening);
    }
    bool Append(const NativePath& path, TextView bytes) override { return disk_.Append(path, bytes); }
    bool Remove(const NativePath& path) override { return disk_.Remove(path); }
    void AddFolder(const NativePath& folder) override { disk_.AddFolder(folder); }
    bool Synchronise(std::size_t most) override {
        if (onSynchronise) onSynchronise();
        return disk_.Synchronise(most);
    }
    std::size_t WaitingCount() const override { return disk_.WaitingCount(); }
    const Text& LastError() const override { return disk_.LastError(); }

    std::function<void()> onSynchronise{};

 private:
    DurableFiles disk_{};
};

}  // namespace nordkeep
