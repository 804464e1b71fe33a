#include "runtime/DataFiles.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";
/// The main settings, those of lines, and the users.
constexpr TextView kWithPasswords = "*.INI";

}  // namespace

Text WithLineEnds(TextView bytes) {
    Text text;
    text.reserve(bytes.size() + kLineEnd.size());
    for (const TextView line : Lines(bytes)) text.append(line).append(kLineEnd);
    return text;
}

ScanPattern SplitScanPattern(TextView pattern) {
    const std::size_t separator = pattern.find_last_of("\\/");
    if (separator == TextView::npos) return {.mask = pattern};
    return {.folder = pattern.substr(0, separator), .mask = pattern.substr(separator + 1)};
}

bool FitsScan(TextView name, TextView mask) {
    if (name.starts_with('.')) return false;
    return mask.empty() || mask == "*.*" || MatchesMask(name, mask);
}

NativePath LocalDataFiles::PathToRead(TextView path) const {
    return path.find(':') == TextView::npos ? dataFolder_.Resolve(path) : dataFolder_.ResolveSetting(path);
}

Text LocalDataFiles::ReadTextFile(TextView path) {
    return WithLineEnds(ReadBinaryFile(path));
}

FileContent LocalDataFiles::LoadTextFile(TextView path) {
    FileContent content = LoadFile(PathToRead(path));
    content.bytes = WithLineEnds(content.bytes);
    return content;
}

Text LocalDataFiles::ReadBinaryFile(TextView path) {
    return ReadFile(PathToRead(path)).value_or(Text());
}

void LocalDataFiles::WriteTextFile(TextView path, TextView text) {
    const NativePath file = dataFolder_.Resolve(path);
    const Text bytes = Text(text).append(kLineEnd);
    MatchesMask(path, kWithPasswords) ? ReplacePrivateFile(file, bytes) : ReplaceFile(file, bytes);
}

OleDate LocalDataFiles::FileTimeStamp(TextView path) {
    return FileTime(dataFolder_.Resolve(path));
}

std::vector<Text> LocalDataFiles::ScanForFiles(TextView pattern) {
    const ScanPattern parts = SplitScanPattern(pattern);
    std::vector<Text> names = ListFiles(dataFolder_.Resolve(parts.folder));
    std::erase_if(names, [&](const Text& name) { return !FitsScan(name, parts.mask); });
    return names;
}

void LocalDataFiles::MakeDataFolder(TextView path) {
    MakeFolder(dataFolder_.Resolve(path));
}

}  // namespace nordkeep
