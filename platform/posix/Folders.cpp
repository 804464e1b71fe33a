#include "platform/FolderWalk.h"
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

using OpenFolder = std::unique_ptr<DIR, FolderCloser>;

OpenFolder OpenForReading(const NativePath& path) {
    Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK));
    if (!descriptor) return nullptr;
    OpenFolder folder(::fdopendir(descriptor.Get()));
    if (folder) descriptor.Release();
    return folder;
}

/// The next entry whose name has a form in Windows-1252; none at the end.
std::optional<FolderEntry> NextEntry(DIR* folder) {
    while (const dirent* entry = ::readdir(folder)) {
        const std::string nameOnDisk(entry->d_name);
        if (nameOnDisk == "." || nameOnDisk == "..") continue;
        const Text name = EntryName(nameOnDisk);
        if (!name.empty()) return FolderEntry{nameOnDisk, name, ::dirfd(folder), entry->d_type};
    }
    return std::nullopt;
}

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

}  // namespace

Text EntryName(std::string_view nameOnDisk) {
    // A name on disk holds no NUL, so a NUL can stand for what has no place in the code page.
    Text name = FromUtf8(nameOnDisk, '\0');
    if (name.find('\0') != Text::npos) name.clear();
    return name;
}

bool ScanFolder(const NativePath& path, const std::function<void(const FolderEntry&)>& show) {
    const OpenFolder folder = OpenForReading(path);
    if (!folder) return false;
    while (const std::optional<FolderEntry> entry = NextEntry(folder.get())) show(*entry);
    return true;
}

struct FolderWalk::Open {
    OpenFolder folder;
};

FolderWalk::FolderWalk(const NativePath& folder) {
    if (OpenFolder opened = OpenForReading(folder)) open_.reset(new Open{std::move(opened)});
}

FolderWalk::~FolderWalk() = default;

std::optional<Text> FolderWalk::Next() {
    std::optional<FolderEntry> entry = open_ ? NextEntry(open_->folder.get()) : std::nullopt;
    return entry ? std::optional(std::move(entry->name)) : std::nullopt;
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
    SynchroniseFolderOf(path);
    return true;
}

bool RemoveFolder(const NativePath& path) {
    return ::rmdir(path.c_str()) == 0;
}

}  // namespace nordkeep
