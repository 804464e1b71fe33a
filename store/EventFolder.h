#pragma once

#include "platform/FileTree.h"

#include <cstdint>
#include <optional>
#include <random>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace nordkeep {

/// Chooses numbers for new event files. A number is taken while a file has it, whatever its spelling and
/// content, or while it has been given out.
class EventNumbers {
 public:
    explicit EventNumbers(std::uint64_t seed, std::int32_t count = 10'000'000)
        : random_(seed), count_(count) {}

    void Take(std::int32_t number) { taken_.insert(number); }
    void Release(std::int32_t number) { taken_.erase(number); }
    bool IsTaken(std::int32_t number) const { return taken_.contains(number); }
    void Clear() { taken_.clear(); }
    /// A free number of 0 to count - 1, by chance; none when all are taken. It is not taken yet.
    std::optional<std::int32_t> Draw();

 private:
    std::mt19937_64 random_;
    std::int32_t count_;
    std::unordered_set<std::int32_t> taken_{};
};

/// One entry of the folder whose name is that of an event file.
struct EventFileName {
    std::int32_t number = 0;
    Text name{};
    NativePath path{};
    bool isSpare = false;  // another spelling of the name is the event's file
};

/// "A" and seven digits; empty for a record that has no file.
Text EventPointerOf(std::int32_t number);
/// The same with ".eve" behind it.
Text EventFileNameOf(std::int32_t number);
/// The number of an event file's name in any spelling; none for any other name.
std::optional<std::int32_t> EventNumberOf(TextView name);

/// Data\Events: which file belongs to which number. The folder is listed once; from then on every question is
/// answered from memory, or by the one file that it is about.
class EventFolder {
 public:
    EventFolder(const FileTree& dataFolder, std::uint64_t seed) : dataFolder_(dataFolder), numbers_(seed) {}

    /// Lists the folder. The result is in the order of the upper-cased names; of two spellings of one name
    /// only the first is taken for the event's file.
    std::vector<EventFileName> List();
    const NativePath& Path();
    /// A name of the folder that is met behind List: whether it is the file of its number.
    EventFileName Meet(std::int32_t number, const Text& name);
    /// A number that no file has; none when all are taken. It counts as taken from now on.
    std::optional<std::int32_t> GetFreeEventFileNumber();
    /// The file of a number, under the spelling that it was found with.
    NativePath PathOf(std::int32_t number);
    /// The file of a number is deleted: the number is free.
    void Release(std::int32_t number);
    void Take(std::int32_t number) { numbers_.Take(number); }
    /// Makes the folder when it has gone.
    void Restore() const;

 private:
    void ListOnce();
    void MakeSpare(std::vector<EventFileName>& files, std::int32_t number);

    const FileTree& dataFolder_;
    NativePath path_{};  // empty until the folder has been listed
    EventNumbers numbers_;
    std::unordered_map<std::int32_t, Text> otherSpellings_{};
};

}  // namespace nordkeep
