#include "network/FileService.h"

#include "network/FileDates.h"
#include "network/messages/Frames.h"
#include "network/messages/Payload.h"
#include "runtime/Fields.h"
#include "runtime/IniText.h"

#include <algorithm>

namespace nordkeep {
namespace {

/// The answer is a LongString: its length takes four bytes of the payload.
constexpr std::size_t kLongestFile = kLongestPayload - 4;
constexpr TextView kSeparators = "\\/";
constexpr TextView kGeneral = "General";
constexpr TextView kNextAlarmId = "NextAlarmId";

/// A client's text of the main settings file, with the number that this copy has counted to meanwhile.
Text WithPresentNumber(const NativePath& path, Text text) {
    const auto present = ReadFileUnlinked(path, kLongestFile);
    const auto number = present ? IniText(*present).Value(kGeneral, kNextAlarmId) : std::nullopt;
    return number ? IniText(std::move(text)).WithValue(kGeneral, kNextAlarmId, *number) : text;
}

/// The name of a file in the folder Settings; empty for any other path.
TextView NameInSettings(TextView path) {
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == TextView::npos) return {};
    TextView folder = path.substr(0, separator);
    while (!folder.empty() && kSeparators.find(folder.front()) != TextView::npos) folder.remove_prefix(1);
    return EqualsNoCase(folder, "Settings") ? path.substr(separator + 1) : TextView();
}

constexpr int kEditorLevel = 2;
constexpr const char* kForEditors[] = {"*.IDCode", "*.TypeCode",   "*.DataCode",
                                       "*.desc",   "Nordkeep.INI", "Port*.ini"};

bool LiesBelow(TextView path, TextView folder) {
    return path.size() > folder.size() && EqualsNoCase(path.substr(0, folder.size()), folder);
}

}  // namespace

std::optional<Text> FileService::Inside(TextView path, PathKind kind) const {
    const auto place = paths_.Find(path, kind);
    const auto root = CanonicalPath(dataFolder_.Root());
    if (!place || !root || !place->path.starts_with(*root + "/")) return std::nullopt;
    Text inside = FromUtf8(place->path.substr(root->size() + 1));
    std::ranges::replace(inside, '/', '\\');
    return inside;
}

// By the place that the path leads to: however it is written, and through whatever links.
bool FileService::MayWrite(TextView path, int level) const {
    const auto inside = Inside(path, PathKind::BelowDataFolder);
    if (!inside) return false;
    if (LiesBelow(*inside, "Comments\\") || LiesBelow(*inside, "Information\\")) return true;
    constexpr TextView kSettings = "Settings\\";
    if (level < kEditorLevel || !LiesBelow(*inside, kSettings)) return false;
    const Text name = inside->substr(kSettings.size());
    if (name.find('\\') != Text::npos) return false;
    return std::ranges::any_of(kForEditors, [&](const char* mask) { return MatchesMask(name, mask); });
}

// Copies of such a file, whatever is behind its name, hold the same passwords.
bool FileService::MayRead(TextView path, int level) const {
    const auto inside = Inside(path, PathKind::Read);
    if (!inside || !LiesBelow(*inside, "Settings\\")) return true;
    const Text name = inside->substr(inside->rfind('\\') + 1);
    if (MatchesMask(name, "Users.INI*")) return false;
    return level >= kEditorLevel || !MatchesMask(name, "Port*.ini*");
}

Text FileService::ReadTextFile(TextView path) const {
    Text text = WithLineEnds(ReadBinaryFile(path));
    return text.size() > kLongestFile ? Text() : text;
}

Text FileService::ReadBinaryFile(TextView path) const {
    const auto place = paths_.Find(path, PathKind::Read);
    return place ? ReadFileUnlinked(place->path, kLongestFile).value_or(Text()) : Text();
}

bool FileService::WriteTextFile(TextView path, TextView text) const {
    const auto place = paths_.Find(path, PathKind::BelowDataFolder);
    if (!place) return false;
    // A file that is longer than an answer was read as an empty one; whoever writes it has not seen it.
    if (StampOf(place->path).size > static_cast<std::int64_t>(kLongestFile)) return false;
    Text bytes = Text(text).append("\r\n");
    if (IsMainSettings(path)) bytes = WithPresentNumber(place->path, std::move(bytes));
    return ReplaceFileUnlinked(place->path, bytes);
}

std::int32_t FileService::FileTimeStamp(TextView path) const {
    const auto place = paths_.Find(path, PathKind::BelowDataFolder);
    return place ? FileDateToLong(FileTimeUnlinked(place->path)) : 0;
}

Text FileService::ScanForFiles(TextView pattern) const {
    const ScanPattern parts = SplitScanPattern(pattern);
    const auto folder = paths_.FindFolder(parts.folder);
    if (!folder || parts.mask.find('\0') != TextView::npos) return {};
    Text names;
    for (const Text& name : ListFiles(*folder)) {
        const NativePath path = *folder + "/" + ToUtf8(name);
        if (!FitsScan(name, parts.mask) || paths_.IsUsersFile(*folder, path)) continue;
        if (FileTimeUnlinked(path).IsNever()) continue;  // a link
        if (names.size() + name.size() + 1 > kLongestShortString) break;
        names.append(name).append("|");
    }
    return names;
}

void FileService::MakeDataFolder(TextView path) const {
    while (!path.empty() && kSeparators.find(path.back()) != TextView::npos) path.remove_suffix(1);
    if (const auto place = paths_.Find(path, PathKind::BelowDataFolder)) MakeFolder(place->path);
}

bool IsTranslationFile(TextView path) {
    const TextView name = NameInSettings(path);
    const std::size_t dot = name.rfind('.');
    if (dot == TextView::npos) return false;
    return EqualsNoCase(name.substr(dot), ".IDCode") || EqualsNoCase(name.substr(dot), ".TypeCode");
}

bool IsMainSettings(TextView path) {
    return EqualsNoCase(NameInSettings(path), "Nordkeep.INI");
}

bool IsSettingsFile(TextView path) {
    return IsMainSettings(path) || MatchesMask(NameInSettings(path), "Port*.ini");
}

}  // namespace nordkeep
