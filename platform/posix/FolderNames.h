#pragma once

#include "platform/Files.h"
#include "platform/posix/Descriptor.h"

#include <map>
#include <set>
#include <unordered_map>

struct inotify_event;

namespace nordkeep {

/// Finds names in folders without regard to case, from listings that are kept.
///
/// A folder with many thousands of files gets new ones at each event, so a listing cannot be read again
/// whenever its folder has changed: the system tells the changes (inotify), before the call that made them
/// returns. The folder's modification time is held against that, for changes that it does not tell (made by
/// another machine), and is all there is where it tells nothing.
class FolderNames {
 public:
    /// The name on disk of the case-blind match that sorts first; empty when there is none.
    std::string Find(const NativePath& folder, TextView name);

 private:
    struct Listing {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t modifiedNs = 0;
        bool isSettled = false;  // false: a later change could carry the same modification time
        bool wasTold = false;    // changes came in since the modification time was taken
        int watch = -1;
        std::unordered_map<Text, std::set<std::string>> names{};  // upper case to the names on disk
    };
    using Listings = std::map<NativePath, Listing>;

    Listing* Current(const NativePath& folder);
    Listing* Read(const NativePath& folder);
    void TakeChanges();
    void Apply(const inotify_event& change, const char* name);
    void Watch(Listings::iterator entry);
    void Forget(Listings::iterator entry);
    void ForgetAll();

    Listings listings_{};
    std::unordered_map<int, Listings::iterator> watched_{};
    Descriptor changes_{};
};

}  // namespace nordkeep
