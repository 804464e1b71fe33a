#pragma once

#include "platform/FileTree.h"

namespace nordkeep {

/// A file that lines are appended to again and again. It stays open for as long as its name stands for it:
/// when somebody deletes, renames or replaces it, the next line goes to what has the name then. Where the
/// system does not tell of such changes it is opened for each line.
class AppendingFile {
 public:
    explicit AppendingFile(const FileTree& folder) : folder_(folder) {}
    ~AppendingFile() { Close(); }
    AppendingFile(const AppendingFile&) = delete;
    AppendingFile& operator=(const AppendingFile&) = delete;

    /// As AppendToFile, to the file that `path` stands for below the folder.
    bool Append(TextView path, TextView bytes);
    /// The same where another program takes the file away to read it: what it would miss must not be written
    /// behind its back, so the name is looked at once more, also within a Moment.
    bool AppendUnlessTaken(TextView path, TextView bytes);
    void Close();
    bool IsOpen() const { return descriptor_ >= 0; }

 private:
    bool Open(const NativePath& file);

    const FileTree& folder_;
    int descriptor_ = -1;
    Text path_{};  // as it was asked for
    NameHold hold_{};
};

/// A file in which a few bytes are written over again and again. It stays open for as long as the caller, who
/// looks at its stamp in front of each write, finds the same file.
class OverwritingFile {
 public:
    OverwritingFile() = default;
    ~OverwritingFile() { Close(); }
    OverwritingFile(OverwritingFile&& other) noexcept { *this = std::move(other); }
    OverwritingFile& operator=(OverwritingFile&& other) noexcept;

    /// Writes over bytes in the middle of the file, which keeps its length. False when it is another one than
    /// that of the stamp, or has not that many bytes.
    bool Overwrite(const NativePath& path, const FileStamp& stamp, std::size_t offset, TextView bytes);
    void Close();

 private:
    int descriptor_ = -1;
    std::uint64_t inode_ = 0;
};

}  // namespace nordkeep
