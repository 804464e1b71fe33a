#include "platform/posix/FolderNames.h"

#include "platform/posix/FolderScan.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <time.h>

#include <array>
#include <cstring>

namespace nordkeep {
namespace {

/// Look-ups go to a handful of folders; a stream of others (folders named by data) must not pile up here.
constexpr std::size_t kMostListings = 64;
/// File systems keep times as coarse as some clock ticks: within this time of the last change a further one
/// can leave the same time.
constexpr std::int64_t kSettlingNs = 50'000'000;

constexpr std::uint32_t kAppears = IN_CREATE | IN_MOVED_TO;
constexpr std::uint32_t kDisappears = IN_DELETE | IN_MOVED_FROM;
constexpr std::uint32_t kFolderGoes = IN_IGNORED | IN_UNMOUNT;

std::int64_t Nanoseconds(const timespec& time) {
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

std::int64_t WallClockNs() {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return Nanoseconds(now);
}

}  // namespace

std::string FolderNames::Find(const NativePath& folder, TextView name) {
    const Listing* listing = Current(folder);
    if (listing == nullptr) return {};
    const auto found = listing->names.find(UpperCase(name));
    return found == listing->names.end() ? std::string() : *found->second.begin();
}

FolderNames::Listing* FolderNames::Current(const NativePath& folder) {
    struct stat status {};
    if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return nullptr;
    TakeChanges();
    const auto entry = listings_.find(folder);
    if (entry == listings_.end()) return Read(folder);
    Listing& listing = entry->second;
    const std::int64_t modifiedNs = Nanoseconds(status.st_mtim);
    const bool isSameFolder = listing.device == status.st_dev && listing.inode == status.st_ino;
    const bool isUnchanged = listing.modifiedNs == modifiedNs && (listing.isSettled || listing.watch >= 0);
    if (!isSameFolder || !(isUnchanged || listing.wasTold)) {
        Forget(entry);
        return Read(folder);
    }
    listing.modifiedNs = modifiedNs;
    listing.wasTold = false;
    return &listing;
}

FolderNames::Listing* FolderNames::Read(const NativePath& folder) {
    if (listings_.size() >= kMostListings) ForgetAll();
    const auto entry = listings_.try_emplace(folder).first;
    // Watched first: what changes while the folder is read is then told.
    Watch(entry);
    struct stat status {};
    Listing& listing = entry->second;
    const bool isRead =
        ::stat(folder.c_str(), &status) == 0 && ScanFolder(folder, [&](const FolderEntry& found) {
            listing.names[UpperCase(found.name)].insert(found.nameOnDisk);
        });
    if (!isRead) {
        Forget(entry);
        return nullptr;
    }
    listing.device = status.st_dev;
    listing.inode = status.st_ino;
    listing.modifiedNs = Nanoseconds(status.st_mtim);
    listing.isSettled = WallClockNs() - listing.modifiedNs >= kSettlingNs;
    return &listing;
}

void FolderNames::TakeChanges() {
    if (watched_.empty()) return;
    alignas(inotify_event) std::array<char, 16384> buffer;
    ssize_t count = 0;
    while ((count = ::read(changes_.Get(), buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < count;) {
            inotify_event change{};
            std::memcpy(&change, buffer.data() + at, sizeof change);
            Apply(change, buffer.data() + at + sizeof change);
            at += static_cast<ssize_t>(sizeof change + change.len);
        }
    }
}

void FolderNames::Apply(const inotify_event& change, const char* name) {
    if ((change.mask & IN_Q_OVERFLOW) != 0) return ForgetAll();
    const auto watched = watched_.find(change.wd);
    if (watched == watched_.end()) return;
    if ((change.mask & kFolderGoes) != 0) return Forget(watched->second);
    Listing& listing = watched->second->second;
    listing.wasTold = true;
    const std::string nameOnDisk = change.len == 0 ? std::string() : std::string(name);
    const Text key = UpperCase(EntryName(nameOnDisk));
    if (key.empty()) return;
    if ((change.mask & kAppears) != 0) listing.names[key].insert(nameOnDisk);
    if ((change.mask & kDisappears) == 0) return;
    const auto found = listing.names.find(key);
    if (found == listing.names.end()) return;
    found->second.erase(nameOnDisk);
    if (found->second.empty()) listing.names.erase(found);
}

void FolderNames::Watch(Listings::iterator entry) {
    if (!changes_) changes_ = Descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    const std::uint32_t events = kAppears | kDisappears | IN_ONLYDIR;
    const int watch = changes_ ? ::inotify_add_watch(changes_.Get(), entry->first.c_str(), events) : -1;
    // One watch per folder: under a second path (a link) the folder goes by its modification time.
    if (watch < 0 || !watched_.try_emplace(watch, entry).second) return;
    entry->second.watch = watch;
}

void FolderNames::Forget(Listings::iterator entry) {
    const int watch = entry->second.watch;
    if (watch >= 0) {
        watched_.erase(watch);
        ::inotify_rm_watch(changes_.Get(), watch);
    }
    listings_.erase(entry);
}

void FolderNames::ForgetAll() {
    while (!listings_.empty()) Forget(listings_.begin());
}

}  // namespace nordkeep
