#pragma once

#include "platform/FileTree.h"
#include "store/AlarmText.h"
#include "store/StoreSettings.h"

#include <utility>

namespace nordkeep {

/// The line of a record in Data\Archive.TXT, with its line end.
Text ArchiveLine(const cAlarm& alarm, const StoreSettings& settings, const AlarmText& texts);

/// Data\Archive.TXT, to which every record that leaves the store is appended. Lines that could not be written
/// are kept and go out, in their order, in front of the next ones.
class Archive {
 public:
    explicit Archive(const FileTree& dataFolder) : dataFolder_(dataFolder) {}

    NativePath Path() const;
    void Keep(TextView lines);
    /// The kept lines, which are the caller's to write from now on.
    Text TakeBacklog() { return std::exchange(backlog_, {}); }
    bool HasBacklog() const { return !backlog_.empty(); }

 private:
    const FileTree& dataFolder_;
    Text backlog_{};
};

}  // namespace nordkeep
