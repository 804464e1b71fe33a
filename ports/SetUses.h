#pragma once

#include "platform/FileTree.h"
#include "platform/Files.h"
#include "runtime/Protocol.h"
#include "runtime/Settings.h"
#include "translation/SetCheck.h"

#include <map>
#include <optional>
#include <vector>

namespace nordkeep {

/// A line that names a set for a protocol.
struct SetUse {
    Text port{};
    Protocol protocol{};
};
/// By the settings files of all lines, in their order.
std::vector<SetUse> UsesOfSet(const FileTree& dataFolder, const Settings& files, TextView set);

/// What the check of a set has to know of this copy beside the set's files.
class SetGround {
 public:
    SetGround(const FileTree& dataFolder, const Settings& files) : dataFolder_(dataFolder), files_(files) {}
    /// Outlived by this.
    SetSurroundings Of(TextView set);

 private:
    std::optional<PictureSize> MapSizeOf(TextView file);

    const FileTree& dataFolder_;
    const Settings& files_;
    /// A picture is read once as long as it stays the same.
    std::map<Text, std::pair<FileStamp, std::optional<PictureSize>>> maps_{};
};

/// Gives a set another name: its files in Settings, its folders of information, comments and maps, and in the
/// settings of the lines that use it. False, with everything as it was, when one of these cannot be moved.
bool MoveSet(const FileTree& dataFolder, Settings& files, const Text& from, const Text& to);

}  // namespace nordkeep
