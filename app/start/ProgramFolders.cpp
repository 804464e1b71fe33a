#include "app/start/ProgramFolders.h"

#include "platform/ProgramFile.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr const char* kServiceData = NORDKEEP_STATE_FOLDER;
// From the folder of the program, so that an installation can be moved as a whole.
constexpr const char* kSharedFiles = NORDKEEP_SHARE_FROM_BIN;

NativePath FolderOf(const NativePath& file) {
    return file.substr(0, file.rfind('/'));
}

bool HasProgramFiles(const NativePath& folder) {
    return std::ranges::any_of(ListFiles(folder),
                               [](const Text& name) { return MatchesMask(name, "NK_Lang.*"); });
}

}  // namespace

NativePath ProgramFilesFolder(const NativePath& programFile) {
    NativePath own = FolderOf(programFile);
    if (HasProgramFiles(own)) return own;
    const auto shared = CanonicalPath(own + "/" + kSharedFiles);
    return shared && HasProgramFiles(*shared) ? *shared : own;
}

NativePath DefaultDataFolder(const NativePath& programFile, bool isService) {
    NativePath own = FolderOf(programFile);
    const bool isInstalled = ProgramFilesFolder(programFile) != own;
    if (isService) return isInstalled ? kServiceData : own;
    if (!isInstalled && IsFolderWritable(own)) return own;
    const NativePath user = UserDataFolder();
    return user.empty() ? own : user + "/nordkeep";
}

}  // namespace nordkeep
