#pragma once

#include "platform/KeptFiles.h"
#include "runtime/IniText.h"

#include <unordered_map>

namespace nordkeep {

/// Told of settings files that cannot be read.
class SettingsListener {
 public:
    virtual ~SettingsListener() = default;
    /// Once for each series of failures: what was known of the file before goes on counting, and nothing is
    /// written to it.
    virtual void CannotBeRead(const NativePath& path, const Text& reason) = 0;
    virtual void CanBeReadAgain(const NativePath& path) = 0;
};

/// Settings files in their parsed form. The stamp of a file is asked at each call, in a Moment of the folder
/// at the first one, and the parsed form is kept as long as the stamp stays. A file that is there and cannot
/// be read keeps the content that was known before, and is not written.
class IniFiles {
 public:
    explicit IniFiles(const FileTree& folder) : folder_(folder) {}

    /// The listener outlives this object or is taken away with nullptr.
    void SetListener(SettingsListener* listener) { listener_ = listener; }
    /// The present content; without a file it is empty. Valid until the next call.
    const IniText& TextOf(const NativePath& path) { return Present(path).text; }
    /// False when the file could not be written.
    bool Write(const NativePath& path, TextView section, TextView key, TextView value);

 private:
    struct Cached {
        FileStamp stamp{};
        IniText text{};
        bool isUnreadable = false;
        bool isToReadAgain = false;
        std::uint64_t look = 0;  // in which the stamp was asked
        OverwritingFile file{};
    };

    Cached& Present(const NativePath& path);
    void NoteReadable(const NativePath& path, Cached& cached, const FileContent& content);
    bool OverwriteValue(const NativePath& path, TextView section, TextView key, TextView value);

    const FileTree& folder_;
    SettingsListener* listener_ = nullptr;
    std::unordered_map<NativePath, Cached> cache_{};
};

}  // namespace nordkeep
