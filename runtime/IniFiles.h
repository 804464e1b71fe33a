#pragma once

#include "platform/FileTree.h"
#include "runtime/IniText.h"

#include <unordered_map>

namespace nordkeep {

/// Settings files in their parsed form. The stamp of a file is asked at each call, and the parsed form is
/// kept as long as the stamp stays.
class IniFiles {
 public:
    /// The present content; without a file it is empty. Valid until the next call.
    const IniText& TextOf(const NativePath& path);
    /// False when the file could not be written.
    bool Write(const NativePath& path, TextView section, TextView key, TextView value);

 private:
    struct Cached {
        FileStamp stamp{};
        IniText text{};
    };

    bool OverwriteValue(const NativePath& path, TextView section, TextView key, TextView value);

    std::unordered_map<NativePath, Cached> cache_{};
};

}  // namespace nordkeep
