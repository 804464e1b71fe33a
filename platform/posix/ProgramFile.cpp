#include "platform/ProgramFile.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace nordkeep {

NativePath ProgramFile() {
    return CanonicalPath("/proc/self/exe").value_or(NativePath());
}

NativePath ProgramFolder() {
    const NativePath file = ProgramFile();
    const std::size_t slash = file.rfind('/');
    return slash == NativePath::npos ? "." : file.substr(0, slash == 0 ? 1 : slash);
}

bool IsFolderWritable(const NativePath& folder) {
    return ::access(folder.c_str(), W_OK | X_OK) == 0;
}

NativePath UserDataFolder() {
    const char* data = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    NativePath folder;
    if (data && *data == '/') {  // a relative one is to be ignored
        folder = data;
    } else if (home && *home == '/') {
        folder = NativePath(home) + "/.local/share";
    }
    std::error_code ignored;
    if (!folder.empty()) std::filesystem::create_directories(folder, ignored);
    return folder;
}

}  // namespace nordkeep
