#pragma once

#include "runtime/DataFiles.h"

#include <utility>

namespace nordkeep {

/// A text file that several people work on at a time: it is read, changed, and written back only when nobody
/// else has written it meanwhile. Works alike on local files and on those of a client's server.
class SharedText {
 public:
    explicit SharedText(DataFiles& files) : files_(files) {}

    /// A missing file is an empty one; one that cannot be read is none at all.
    void Load(Text path);
    /// The file has another name now and is the same.
    void NoteRenamed(Text path) { path_ = std::move(path); }
    /// What somebody wrote there is not known, so nothing may be written over it.
    bool IsUnreadable() const { return isUnreadable_; }
    const Text& Path() const { return path_; }
    bool Exists() const { return !stamp_.IsNever(); }
    /// What was last read or written, without line ends at its end.
    const Text& Content() const { return content_; }

    /// Makes the folders that the file lies in.
    void MakeFolders();
    /// True when somebody else has written the file since it was read. What could not be read, or may not
    /// have been, is read again.
    bool HasChanged();
    /// Writes the text with one line end behind it, and reads it back, since a write has no answer. False
    /// when the file does not hold the text then.
    bool Write(TextView text);

 private:
    DataFiles& files_;
    Text path_{};
    Text content_{};
    OleDate stamp_{};
    bool isUnreadable_ = false;
};

/// The text without line ends at its end.
TextView WithoutLastLineEnds(TextView text);

}  // namespace nordkeep
