#include "platform/posix/FolderNames.h"

#include "platform/posix/FolderScan.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <time.h>

#include <array>
#include <climits>
#include <cstring>

namespace nordkeep {
namespace {

/// Look-ups go to a handful of folders; a stream of others (folders named by data) must not pile up here.
constexpr std::size_t kMostFolders = 256;
constexpr std::size_t kMostFound = 4096;
/// File systems keep times as coarse as some clock ticks: within this time of the last change a further one
/// can leave the same time.
constexpr std::int64_t kSettlingNs = 50'000'000;
constexpr std::int64_t kLookAtFoldersMs = 1000;
/// Longer than the handling of an event, shorter than anybody's patience.
constexpr std::int64_t kLongestMomentMs = 20;

constexpr std::uint32_t kAppears = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kDisappears = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t kFolderGoes = IN_IGNORED | IN_UNMOUNT | IN_MOVE_SELF | IN_DELETE_SELF;

constexpr std::size_t kLargestChange = sizeof(inotify_event) + NAME_MAX + 1;

std::int64_t Nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

std::int64_t ClockNs(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return Nanoseconds(now);
}

std::int64_t MonotonicMs() {
    return ClockNs(CLOCK_MONOTONIC) / 1'000'000;
}

bool Exists(const NativePath& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0;
}

NativePath Below(const NativePath& folder, const std::string& name) {
    return folder.ends_with('/') ? folder + name : folder + "/" + name;
}

bool IsSameFolder(const struct stat& status, std::uint64_t device, std::uint64_t inode) {
    return S_ISDIR(status.st_mode) && status.st_dev == device && status.st_ino == inode;
}

}  // namespace

std::string FolderNames::Find(const NativePath& folder, const std::string& exact, TextView name) {
    if (Folder* told = Told(folder)) return FindTold(folder, *told, exact, name);
    if (Exists(Below(folder, exact))) return exact;
    const Folder* listed = ListedByTime(folder);
    return listed ? FindListed(*listed, exact, name) : std::string();
}

std::string FolderNames::FindTold(const NativePath& path, Folder& folder, const std::string& exact,
                                  TextView name) {
    if (folder.isListed) return FindListed(folder, exact, name);
    if (folder.found.contains(exact)) return exact;
    if (Exists(Below(path, exact))) {
        if (folder.found.size() >= kMostFound) folder.found.clear();
        folder.found.insert(exact);
        return exact;
    }
    return List(path, folder) ? FindListed(folder, exact, name) : std::string();
}

std::string FolderNames::FindListed(const Folder& folder, const std::string& exact, TextView name) {
    const auto found = folder.names.find(UpperCase(name));
    if (found == folder.names.end()) return {};
    return found->second.contains(exact) ? exact : *found->second.begin();
}

/// The folder, when all that changes in it is told.
FolderNames::Folder* FolderNames::Told(const NativePath& path) {
    TakeChanges();
    auto entry = folders_.find(path);
    if (entry == folders_.end()) {
        if (folders_.size() >= kMostFolders) ForgetAll();
        entry = folders_.try_emplace(path).first;
        Watch(entry);
    }
    return entry->second.watch >= 0 ? &entry->second : nullptr;
}

FolderNames::Folder* FolderNames::ListedByTime(const NativePath& path) {
    struct stat status {};
    Folder& folder = folders_[path];
    const bool isThere = ::stat(path.c_str(), &status) == 0;
    const bool isSame = isThere && folder.isListed && folder.isSettled &&
                        IsSameFolder(status, folder.device, folder.inode) &&
                        folder.modifiedNs == Nanoseconds(status.st_mtim);
    if (isSame) return &folder;
    folder = {};
    if (!isThere || !S_ISDIR(status.st_mode)) return nullptr;
    folder.device = status.st_dev;
    folder.inode = status.st_ino;
    folder.modifiedNs = Nanoseconds(status.st_mtim);
    folder.isSettled = ClockNs(CLOCK_REALTIME) - folder.modifiedNs >= kSettlingNs;
    return List(path, folder) ? &folder : nullptr;
}

bool FolderNames::List(const NativePath& path, Folder& folder) {
    folder.names.clear();
    folder.isListed = ScanFolder(path, [&](const FolderEntry& entry) {
        folder.names[UpperCase(entry.name)].insert(entry.nameOnDisk);
    });
    if (folder.isListed) folder.found.clear();
    return folder.isListed;
}

void FolderNames::Watch(Folders::iterator entry) {
    if (!changes_) changes_ = Descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    const NativePath& path = entry->first;
    if (!changes_ || IsOnAnotherMachine(path.c_str())) return;
    const std::uint32_t events = kAppears | kDisappears | IN_MOVE_SELF | IN_DELETE_SELF | IN_ONLYDIR;
    const int watch = ::inotify_add_watch(changes_.Get(), path.c_str(), events);
    // One watch per folder: under a second path (a link) its changes are not told.
    if (watch < 0 || !watched_.try_emplace(watch, entry).second) return;
    struct stat status {};
    entry->second.watch = watch;
    if (::stat(path.c_str(), &status) != 0) return;  // gone again, which is told
    entry->second.device = status.st_dev;
    entry->second.inode = status.st_ino;
}

std::shared_ptr<const bool> FolderNames::Hold(const NativePath& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == NativePath::npos) return nullptr;
    Folder* folder = Told(slash == 0 ? "/" : path.substr(0, slash));
    if (!folder) return nullptr;
    std::erase_if(folder->holds, [](const auto& hold) { return hold.second.expired(); });
    const auto hold = std::make_shared<bool>(true);
    folder->holds.emplace(UpperCase(EntryName(path.substr(slash + 1))), hold);
    return hold;
}

void FolderNames::BeginMoment() {
    if (moments_++ == 0) takenAtMs_ = -1;
}

std::uint64_t FolderNames::PresentLook() {
    if (moments_ == 0) return 0;
    TakeChanges();
    return look_;
}

void FolderNames::TakeChanges() {
    const std::int64_t now = MonotonicMs();
    const bool isTaken = moments_ > 0 && takenAtMs_ >= 0 && now - takenAtMs_ < kLongestMomentMs;
    if (isTaken) return;
    takenAtMs_ = now;
    ++look_;
    LookAgain();
    if (now - lookedAtMs_ < kLookAtFoldersMs) return;
    lookedAtMs_ = now;
    LookAtFolders();
}

void FolderNames::LookAgain() {
    if (!watched_.empty()) ReadChanges();
}

void FolderNames::ReadChanges() {
    alignas(inotify_event) std::array<char, 16384> buffer;
    ssize_t count = 0;
    while ((count = ::read(changes_.Get(), buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < count;) {
            inotify_event change{};
            std::memcpy(&change, buffer.data() + at, sizeof change);
            Apply(change, buffer.data() + at + sizeof change);
            at += static_cast<ssize_t>(sizeof change + change.len);
        }
        // Where one more would have found room, there is none.
        if (static_cast<std::size_t>(count) + kLargestChange <= buffer.size()) return;
    }
}

void FolderNames::LookAtFolders() {
    for (auto entry = folders_.begin(); entry != folders_.end();) {
        const auto looked = entry++;
        struct stat status {};
        const Folder& folder = looked->second;
        if (folder.watch < 0) {
            // It may have come, or may be told from now on.
            if (!folder.isListed) folders_.erase(looked);
            continue;
        }
        if (::stat(looked->first.c_str(), &status) == 0 && IsSameFolder(status, folder.device, folder.inode))
            continue;
        Forget(looked);
    }
}

void FolderNames::Apply(const inotify_event& change, const char* name) {
    if ((change.mask & IN_Q_OVERFLOW) != 0) return ForgetAll();
    const auto watched = watched_.find(change.wd);
    if (watched == watched_.end()) return;
    const auto entry = watched->second;
    if ((change.mask & kFolderGoes) != 0) {
        ForgetBelow(entry->first, {});
        return Forget(entry);
    }
    if (change.len > 0) ApplyName(entry, change, name);
}

void FolderNames::ApplyName(Folders::iterator entry, const inotify_event& change, const std::string& name) {
    const Text key = UpperCase(EntryName(name));
    if (key.empty()) return;
    Folder& folder = entry->second;
    folder.found.clear();
    // Also a second spelling can be what a path stands for from now on.
    for (auto [hold, end] = folder.holds.equal_range(key); hold != end; ++hold) {
        if (const auto isSame = hold->second.lock()) *isSame = false;
    }
    folder.holds.erase(key);
    ForgetBelow(entry->first, key);
    if (!folder.isListed) return;
    if ((change.mask & kAppears) != 0) return void(folder.names[key].insert(name));
    const auto found = folder.names.find(key);
    if (found == folder.names.end()) return;
    found->second.erase(name);
    if (found->second.empty()) folder.names.erase(found);
}

/// Forgets what lies below a folder, all of it or what has this name in any spelling.
void FolderNames::ForgetBelow(const NativePath& path, TextView upperName) {
    const NativePath front = Below(path, "");
    for (auto entry = folders_.lower_bound(front);
         entry != folders_.end() && entry->first.starts_with(front);) {
        const auto below = entry++;
        const std::string name =
            below->first.substr(front.size(), below->first.find('/', front.size()) - front.size());
        if (upperName.empty() || UpperCase(EntryName(name)) == upperName) Forget(below);
    }
}

void FolderNames::Forget(Folders::iterator entry) {
    for (const auto& [name, hold] : entry->second.holds) {
        if (const auto isSame = hold.lock()) *isSame = false;
    }
    const int watch = entry->second.watch;
    if (watch >= 0) {
        watched_.erase(watch);
        ::inotify_rm_watch(changes_.Get(), watch);
    }
    folders_.erase(entry);
}

void FolderNames::ForgetAll() {
    while (!folders_.empty()) Forget(folders_.begin());
}

}  // namespace nordkeep
