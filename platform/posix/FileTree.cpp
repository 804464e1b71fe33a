#include "platform/FileTree.h"

#include "platform/posix/FolderNames.h"

#include <sys/stat.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace nordkeep {
namespace {

constexpr TextView kSeparators = "\\/";
/// Below a device there are no files: nothing can be read, made or removed under this name.
constexpr const char* kNoSuchPath = "/dev/null/no-such-name";

bool Exists(const NativePath& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

NativePath Below(const NativePath& folder, const std::string& name) {
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

void TakeComponent(std::vector<TextView>& components, TextView name) {
    if (name.empty() || name == ".") return;
    if (name != "..") {
        components.push_back(name);
    } else if (!components.empty()) {
        components.pop_back();
    }
}

std::vector<TextView> Components(TextView path) {
    std::vector<TextView> components;
    while (true) {
        const std::size_t end = std::min(path.find_first_of(kSeparators), path.size());
        TakeComponent(components, path.substr(0, end));
        if (end == path.size()) return components;
        path.remove_prefix(end + 1);
    }
}

/// The longest part of a path that exists as it is written, and of how many components that is. Nearly always
/// all of it does, so it is looked for from behind.
std::pair<NativePath, std::size_t> LongestExact(const NativePath& folder,
                                                const std::vector<TextView>& components) {
    std::vector<NativePath> exact = {folder};
    for (const TextView name : components) exact.push_back(Below(exact.back(), ToUtf8(name)));
    std::size_t known = components.size();
    while (known > 0 && !Exists(exact[known])) --known;
    return {exact[known], known};
}

bool HasDrive(TextView path) {
    const char letter = path.empty() ? ' ' : UpperCase(path.front());
    return path.size() >= 2 && path[1] == ':' && letter >= 'A' && letter <= 'Z';
}

}  // namespace

FileTree::FileTree(NativePath root) : root_(std::move(root)), names_(std::make_shared<FolderNames>()) {
    while (root_.size() > 1 && root_.ends_with('/')) root_.pop_back();
    if (root_.empty()) root_.push_back('.');
}

NativePath FileTree::Resolve(TextView path) const {
    return ResolveIn(root_, path);
}

NativePath FileTree::ResolveSetting(TextView path) const {
    if (HasDrive(path)) return ResolveIn("/", path.substr(2));
    const bool isAbsolute = path.find_first_of(kSeparators) == 0;
    return ResolveIn(isAbsolute ? "/" : root_, path);
}

bool FileTree::IsOwn(const NativePath& folder) const {
    const std::size_t end = root_.size();
    return folder.starts_with(root_) && (folder.size() == end || folder[end] == '/');
}

NativePath FileTree::ResolveIn(const NativePath& folder, TextView path) const {
    return FindIn(folder, path).path;
}

std::optional<NativePath> FileTree::Find(TextView path) const {
    Found found = FindIn(root_, path);
    return found.isThere ? std::optional(std::move(found.path)) : std::nullopt;
}

FileTree::Found FileTree::FindIn(const NativePath& folder, TextView path) const {
    if (path.find('\0') != TextView::npos) return {kNoSuchPath, false};
    const std::vector<TextView> components = Components(path);
    // What others change at will, and is seldom asked for, is not worth a memory.
    auto [resolved, known] =
        IsOwn(folder) ? std::pair(folder, std::size_t{0}) : LongestExact(folder, components);
    Found found{.path = std::move(resolved)};
    for (; known < components.size(); ++known) {
        const std::string given = ToUtf8(components[known]);
        const std::string name =
            found.isThere ? names_->Find(found.path, given, components[known]) : std::string();
        found.isThere = !name.empty();
        found.path = Below(found.path, found.isThere ? name : given);
    }
    return found;
}

FileTree::Moment::Moment(const FileTree& tree) : names_(tree.names_) {
    names_->BeginMoment();
}

FileTree::Moment::~Moment() {
    names_->EndMoment();
}

std::uint64_t FileTree::PresentLook() const {
    return names_->PresentLook();
}

NameHold FileTree::Hold(const NativePath& path) const {
    return {names_, names_->Hold(path)};
}

bool NameHold::Stands() const {
    if (!isSame_) return false;
    names_->TakeChanges();
    return *isSame_;
}

void NameHold::LookAgain() const {
    if (isSame_) names_->LookAgain();
}

}  // namespace nordkeep
