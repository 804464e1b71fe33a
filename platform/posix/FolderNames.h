#pragma once

#include "platform/Files.h"
#include "platform/posix/Descriptor.h"

#include <map>
#include <memory>
#include <set>
#include <unordered_map>
#include <unordered_set>

struct inotify_event;

namespace nordkeep {

/// Finds names in folders without regard to case, and remembers what it has found.
///
/// The system tells what changes in a folder (inotify), before the call that made the change returns; until
/// then no name in it has to be asked for again, and a folder with many thousands of files is listed once
/// although each event makes a new one. What it does not tell are changes made by another machine: there
/// every name is asked for at each look-up, and listings go by the folder's modification time. Neither does
/// it tell of a change above a folder that no listing stands for, such as another disk on its place: once a
/// second the folders themselves are looked at.
class FolderNames {
 public:
    /// The name on disk: `exact` when that exists, else the case-blind match of `name` that sorts first;
    /// empty when there is none.
    std::string Find(const NativePath& folder, const std::string& exact, TextView name);

    /// False as soon as what has this path may be another file than now. None where the system tells nothing.
    std::shared_ptr<const bool> Hold(const NativePath& path);
    /// Takes in what has changed, but within a moment once only.
    void TakeChanges();

    /// The same within a moment, too.
    void LookAgain();

    void BeginMoment();
    void EndMoment() { --moments_; }
    /// Tells one moment from another; 0 when there is none, or when it has lasted for too long.
    std::uint64_t PresentLook();

 private:
    using NameHold = std::weak_ptr<bool>;
    struct Folder {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t modifiedNs = 0;
        bool isSettled = false;  // false: a later change could carry the same modification time
        bool isListed = false;
        int watch = -1;                                           // -1: its changes are not told
        std::unordered_map<Text, std::set<std::string>> names{};  // upper case to the names on disk
        std::unordered_set<std::string> found{};                  // asked for and there, while not listed
        std::multimap<Text, NameHold> holds{};                    // by upper case
    };
    using Folders = std::map<NativePath, Folder>;

    std::string FindTold(const NativePath& path, Folder& folder, const std::string& exact, TextView name);
    static std::string FindListed(const Folder& folder, const std::string& exact, TextView name);
    Folder* Told(const NativePath& path);
    Folder* ListedByTime(const NativePath& path);
    bool List(const NativePath& path, Folder& folder);
    void Watch(Folders::iterator entry);
    void ReadChanges();
    void Apply(const inotify_event& change, const char* name);
    void ApplyName(Folders::iterator entry, const inotify_event& change, const std::string& name);
    void LookAtFolders();
    void Forget(Folders::iterator entry);
    void ForgetBelow(const NativePath& path, TextView upperName);
    void ForgetAll();

    Folders folders_{};
    std::unordered_map<int, Folders::iterator> watched_{};
    Descriptor changes_{};
    std::int64_t lookedAtMs_ = 0;
    int moments_ = 0;              // on the stack
    std::int64_t takenAtMs_ = -1;  // in this moment
    std::uint64_t look_ = 0;
};

}  // namespace nordkeep
