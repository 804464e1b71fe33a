#include "platform/FileTree.h"

#include "platform/posix/FolderNames.h"

#include <sys/stat.h>

#include <algorithm>
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

// Nearly always the path exists as it is written, or all of it but the file itself: so the longest part that
// does is looked for from behind, and listings are consulted only from there on.
NativePath FileTree::ResolveIn(const NativePath& folder, TextView path) const {
    if (path.find('\0') != TextView::npos) return kNoSuchPath;
    const std::vector<TextView> components = Components(path);
    std::vector<NativePath> exact = {folder};
    for (const TextView name : components) exact.push_back(Below(exact.back(), ToUtf8(name)));
    std::size_t known = components.size();
    while (known > 0 && !Exists(exact[known])) --known;

    NativePath resolved = exact[known];
    bool isThere = true;
    for (; known < components.size(); ++known) {
        const NativePath given = Below(resolved, ToUtf8(components[known]));
        const bool isExact = isThere && Exists(given);
        const std::string name =
            isThere && !isExact ? names_->Find(resolved, components[known]) : std::string();
        isThere = isExact || !name.empty();
        resolved = name.empty() ? given : Below(resolved, name);
    }
    return resolved;
}

}  // namespace nordkeep
