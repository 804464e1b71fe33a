#include "platform/posix/Descriptor.h"
#include "platform/posix/FolderScan.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

namespace nordkeep {
namespace {

struct FolderCloser {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

bool IsPlainFile(const FolderEntry& entry) {
    if (entry.type == DT_REG) return true;
    if (entry.type != DT_LNK && entry.type != DT_UNKNOWN) return false;
    struct stat status {};
    return ::fstatat(entry.descriptor, entry.nameOnDisk.c_str(), &status, 0) == 0 && S_ISREG(status.st_mode);
}

std::vector<Text> SortedNames(const NativePath& folder,
                              const std::function<bool(const FolderEntry&)>& accept) {
    std::vector<std::pair<Text, Text>> found;  // upper case and exact
    ScanFolder(folder, [&](const FolderEntry& entry) {
        if (accept(entry)) found.emplace_back(UpperCase(entry.name), entry.name);
    });
    std::sort(found.begin(), found.end());
    std::vector<Text> names;
    names.reserve(found.size());
    for (auto& [upper, exact] : found) names.push_back(std::move(exact));
    return names;
}

void SynchroniseParent(const NativePath& path) {
    const std::size_t slash = path.rfind('/');
    const NativePath parent = slash == NativePath::npos ? "." : path.substr(0, slash + 1);
    const Descriptor folder(::open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder) ::fsync(folder.Get());
}

}  // namespace

Text EntryName(std::string_view nameOnDisk) {
    // A name on disk holds no NUL, so a NUL can stand for what has no place in the code page.
    Text name = FromUtf8(nameOnDisk, '\0');
    if (name.find('\0') != Text::npos) name.clear();
    return name;
}

bool ScanFolder(const NativePath& path, const std::function<void(const FolderEntry&)>& show) {
    Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor) return false;
    const std::unique_ptr<DIR, FolderCloser> folder(::fdopendir(descriptor.Get()));
    if (!folder) return false;
    descriptor.Release();
    while (const dirent* entry = ::readdir(folder.get())) {
        const std::string nameOnDisk(entry->d_name);
        if (nameOnDisk == "." || nameOnDisk == "..") continue;
        const Text name = EntryName(nameOnDisk);
        if (!name.empty()) show({nameOnDisk, name, ::dirfd(folder.get()), entry->d_type});
    }
    return true;
}

std::vector<Text> ListFiles(const NativePath& folder) {
    return SortedNames(folder, IsPlainFile);
}

std::vector<Text> ListEntries(const NativePath& folder) {
    return SortedNames(folder, [](const FolderEntry&) { return true; });
}

bool FolderExists(const NativePath& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// A file in a new folder is only safe when the folder itself is: it is synchronised here, once, and not with
// each file.
bool MakeFolder(const NativePath& path) {
    if (::mkdir(path.c_str(), 0777) != 0) return errno == EEXIST && FolderExists(path);
    SynchroniseParent(path);
    return true;
}

bool RemoveFolder(const NativePath& path) {
    return ::rmdir(path.c_str()) == 0;
}

}  // namespace nordkeep
