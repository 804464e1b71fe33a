#include "store/EventFolder.h"

#include "platform/Files.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr TextView kFolder = "Data\\Events";
constexpr int kDigits = 7;
constexpr TextView kExtension = ".eve";
constexpr int kTries = 1000;

}  // namespace

std::optional<std::int32_t> EventNumbers::Draw() {
    if (taken_.size() >= static_cast<std::size_t>(count_)) return std::nullopt;
    std::int32_t number = 0;
    for (int i = 0; i < kTries; ++i) {
        number = static_cast<std::int32_t>(random_() % static_cast<std::uint64_t>(count_));
        if (!IsTaken(number)) return number;
    }
    while (IsTaken(number)) number = (number + 1) % count_;
    return number;
}

Text EventPointerOf(std::int32_t number) {
    if (number < 0) return {};
    const Text digits = "0000000" + std::to_string(number);
    return "A" + digits.substr(digits.size() - kDigits);
}

Text EventFileNameOf(std::int32_t number) {
    return EventPointerOf(number) + Text(kExtension);
}

std::optional<std::int32_t> EventNumberOf(TextView name) {
    const TextView digits = Substring(name, 2, kDigits);
    const bool isEvent = name.size() == 1 + kDigits + kExtension.size() && UpperCase(name.front()) == 'A' &&
                         IsNumeric(digits) && EqualsNoCase(name.substr(1 + kDigits), kExtension);
    return isEvent ? std::optional(LeadingInt32(digits)) : std::nullopt;
}

std::vector<EventFileName> EventFolder::List() {
    path_ = dataFolder_.Resolve(kFolder);
    otherSpellings_.clear();
    std::vector<EventFileName> files;
    for (const Text& name : ListEntries(path_)) {
        const std::optional<std::int32_t> number = EventNumberOf(name);
        if (!number) continue;
        numbers_.Take(*number);
        const bool isUsual = name == EventFileNameOf(*number);
        const bool isSecond = !files.empty() && files.back().number == *number;
        if (isUsual && isSecond) MakeSpare(files, *number);
        if (!isUsual && !isSecond) otherSpellings_[*number] = name;
        files.push_back({*number, name, path_ + "/" + name, isSecond && !isUsual});
    }
    return files;
}

void EventFolder::MakeSpare(std::vector<EventFileName>& files, std::int32_t number) {
    otherSpellings_.erase(number);
    for (auto at = files.rbegin(); at != files.rend() && at->number == number; ++at) at->isSpare = true;
}

void EventFolder::ListOnce() {
    if (path_.empty()) List();
}

const NativePath& EventFolder::Path() {
    ListOnce();
    return path_;
}

EventFileName EventFolder::Meet(std::int32_t number, const Text& name) {
    const NativePath path = Path() + "/" + name;
    // New, or the known one under another spelling.
    if (path != PathOf(number) && (!numbers_.IsTaken(number) || !StampOf(PathOf(number)).Exists())) {
        otherSpellings_.erase(number);
        if (name != EventFileNameOf(number)) otherSpellings_[number] = name;
    }
    numbers_.Take(number);
    return {number, name, path, path != PathOf(number)};
}

std::optional<std::int32_t> EventFolder::GetFreeEventFileNumber() {
    ListOnce();
    for (;;) {
        const std::optional<std::int32_t> number = numbers_.Draw();
        if (!number) return std::nullopt;
        numbers_.Take(*number);
        // A file can have been put there by hand since the folder was listed.
        if (!StampOf(PathOf(*number)).Exists()) return number;
    }
}

NativePath EventFolder::PathOf(std::int32_t number) {
    ListOnce();
    const auto other = otherSpellings_.find(number);
    return path_ + "/" + (other == otherSpellings_.end() ? EventFileNameOf(number) : other->second);
}

void EventFolder::Release(std::int32_t number) {
    numbers_.Release(number);
    otherSpellings_.erase(number);
}

void EventFolder::Restore() const {
    MakeFolder(dataFolder_.Resolve("Data"));
    MakeFolder(path_);
}

}  // namespace nordkeep
