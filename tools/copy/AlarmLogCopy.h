#pragma once

#include "platform/FileTree.h"

#include <optional>

namespace nordkeep {

/// When a new file of the copy is begun; the old one keeps its name with the day and a number behind it.
struct CopyRotation {
    int mostKilobytes = 0;  // 0: whatever the size
    bool isDaily = false;
};

/// Moves what stands in the spool of the alarm log to the end of another file: each line once, whenever this
/// is ended and begun again.
///
/// The spool is first taken away under a name of its own, so that the centre goes on with a new one. A plan
/// that is on the medium before the first byte is written says how long the file was; with it a later start
/// sees how far an earlier one came.
class AlarmLogCopy {
 public:
    AlarmLogCopy(const FileTree& folder, Text target, CopyRotation rotation)
        : folder_(folder), target_(folder.ResolveSetting(target)), rotation_(rotation) {}

    /// `today` names what is rotated, "2026-11-22". None when all is done, else what hinders it.
    std::optional<std::string> Run(const std::string& today);

 private:
    bool TakeSpool();
    bool Rotate(const std::string& today);
    bool IsToRotate(const std::string& today) const;
    bool Plan();
    bool AppendRest();
    bool Finish();

    NativePath PathOf(TextView name) const { return folder_.Resolve(name); }
    bool Fail(const char* what, const NativePath& path);

    const FileTree& folder_;
    NativePath target_;
    CopyRotation rotation_;
    std::string reason_{};
};

}  // namespace nordkeep
