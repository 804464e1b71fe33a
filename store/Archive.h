#pragma once

#include "platform/FileTree.h"
#include "store/AlarmText.h"
#include "store/StoreSettings.h"

namespace nordkeep {

/// The line of a record in Data\Archive.TXT, with its line end.
Text ArchiveLine(const cAlarm& alarm, const StoreSettings& settings, const AlarmText& texts);

/// Data\Archive.TXT, to which every record that leaves the store is appended. Lines that cannot be written
/// are kept and go out, in their order, in front of the next one that can.
class Archive {
 public:
    explicit Archive(const FileTree& dataFolder) : dataFolder_(dataFolder) {}

    /// False when the line has to wait.
    bool Append(TextView line);
    /// Tries the waiting lines again; true when none is left.
    bool Flush();
    bool HasBacklog() const { return !backlog_.empty(); }

 private:
    const FileTree& dataFolder_;
    Text backlog_{};
};

}  // namespace nordkeep
