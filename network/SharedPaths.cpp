#include "network/SharedPaths.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <vector>

namespace nordkeep {
namespace {

constexpr TextView kSeparators = "\\/";
constexpr TextView kUsersFile = "Settings\\Users.INI";

bool LiesIn(const NativePath& folder, const NativePath& root) {
    if (root == "/" || folder == root) return true;
    return folder.size() > root.size() && folder.starts_with(root) && folder[root.size()] == '/';
}

NativePath ParentOf(const NativePath& folder) {
    const std::size_t slash = folder.rfind('/');
    return slash == 0 || slash == NativePath::npos ? "/" : folder.substr(0, slash);
}

/// The folder below `folder` that a component names, with all links followed.
std::optional<NativePath> Enter(const FileTree& tree, const NativePath& folder, TextView component) {
    if (component.empty() || component == ".") return folder;
    if (component == "..") return ParentOf(folder);
    const std::optional<NativePath> entered = CanonicalPath(tree.ResolveIn(folder, component));
    return entered && FolderExists(*entered) ? entered : std::nullopt;
}

/// Step by step, since ".." behind a link means the folder above the link's end.
std::optional<NativePath> Walk(const FileTree& tree, NativePath folder, TextView path) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(kSeparators), path.size());
        const std::optional<NativePath> entered = Enter(tree, folder, path.substr(0, end));
        if (!entered) return std::nullopt;
        folder = *entered;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return folder;
}

bool IsName(TextView component) {
    return !component.empty() && component != "." && component != "..";
}

bool IsAbsolute(TextView path, PathKind kind) {
    return kind == PathKind::Read && path.find(':') != TextView::npos;
}

TextView WithoutDrive(TextView path) {
    const char letter = path.empty() ? ' ' : UpperCase(path.front());
    const bool hasDrive = path.size() >= 2 && path[1] == ':' && letter >= 'A' && letter <= 'Z';
    return hasDrive ? path.substr(2) : path;
}

}  // namespace

bool SharedPaths::IsShared(const NativePath& folder, bool isAbsolute) const {
    const std::optional<NativePath> root = CanonicalPath(dataFolder_.Root());
    if (root && LiesIn(folder, *root)) return true;
    if (!isAbsolute) return false;
    const std::vector<Text> named = Split(readableFolders_, ';');
    return std::ranges::any_of(named, [&](const Text& name) {
        if (TrimBlanks(name).empty()) return false;
        const auto readable = CanonicalPath(dataFolder_.ResolveSetting(TrimBlanks(name)));
        return readable && LiesIn(folder, *readable);
    });
}

std::optional<NativePath> SharedPaths::FindFolder(TextView path) const {
    const std::optional<NativePath> root = CanonicalPath(dataFolder_.Root());
    if (!root || path.find('\0') != TextView::npos) return std::nullopt;
    const auto folder = Walk(dataFolder_, *root, path);
    return folder && IsShared(*folder, false) ? folder : std::nullopt;
}

std::optional<SharedPlace> SharedPaths::Find(TextView path, PathKind kind) const {
    const bool isAbsolute = IsAbsolute(path, kind);
    if (isAbsolute) path = WithoutDrive(path);
    const std::size_t separator = path.find_last_of(kSeparators);
    const TextView name = separator == TextView::npos ? path : path.substr(separator + 1);
    if (!IsName(name) || path.find('\0') != TextView::npos) return std::nullopt;
    const std::optional<NativePath> root = CanonicalPath(dataFolder_.Root());
    if (!root) return std::nullopt;
    const auto folder =
        Walk(dataFolder_, isAbsolute ? "/" : *root, path.substr(0, path.size() - name.size()));
    if (!folder || !IsShared(*folder, isAbsolute)) return std::nullopt;
    const SharedPlace place{.folder = *folder, .path = dataFolder_.ResolveIn(*folder, name)};
    return IsUsersFile(place.folder, place.path) ? std::nullopt : std::optional(place);
}

// By its place in any spelling, and by its identity, for a second name that somebody has given it.
bool SharedPaths::IsUsersFile(const NativePath& folder, const NativePath& path) const {
    const NativePath users = dataFolder_.Resolve(kUsersFile);
    const FileStamp stamp = StampOf(path);
    if (stamp.Exists() && stamp.inode == StampOf(users).inode) return true;
    const std::optional<NativePath> root = CanonicalPath(dataFolder_.Root());
    const Text name = FromUtf8(path.substr(path.rfind('/') + 1));
    return root && EqualsNoCase(name, "Users.INI") &&
           EqualsNoCase(FromUtf8(folder), FromUtf8(*root + (*root == "/" ? "" : "/") + "Settings"));
}

}  // namespace nordkeep
