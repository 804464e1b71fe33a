#include "runtime/Versions.h"

#include "platform/Files.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr TextView kSettings = "Settings";
constexpr TextView kBackup = "Settings\\Backup";
constexpr std::size_t kStampDigits = 14;

/// The name of a file that lies in the folder Settings itself; empty for any other.
TextView NameInSettings(TextView path) {
    const std::size_t separator = path.find_first_of("\\/");
    if (separator == TextView::npos || !EqualsNoCase(path.substr(0, separator), kSettings)) return {};
    const TextView name = path.substr(separator + 1);
    return name.find_first_of("\\/") == TextView::npos && IsSafeComponent(name) ? name : TextView();
}

bool IsVersionOf(TextView name, TextView file) {
    if (name.size() != file.size() + 1 + kStampDigits || name[file.size()] != '.') return false;
    return EqualsNoCase(name.substr(0, file.size()), file) && IsNumeric(name.substr(file.size() + 1));
}

}  // namespace

bool KeepVersion(const FileTree& dataFolder, TextView path, OleDate now) {
    const TextView name = NameInSettings(path);
    const NativePath file = dataFolder.Resolve(path);
    if (name.empty() || !StampOf(file).Exists()) return true;
    if (!MakeFolder(dataFolder.Resolve(kBackup))) return false;
    const auto placeOf = [&](TextView version) {
        return dataFolder.Resolve(Text(kBackup).append("\\").append(version));
    };
    const Text version = Text(name).append(".").append(FormatDate(now, "YYYYMMDDHHNNSS"));
    if (!CopyFileWithRights(file, placeOf(version))) return false;
    std::vector<Text> versions = ListFiles(dataFolder.Resolve(kBackup));
    std::erase_if(versions, [name](const Text& known) { return !IsVersionOf(known, name); });
    // Sorted by name, and so by time.
    for (std::size_t i = 0; i + kVersionsKept < versions.size(); ++i) RemoveFile(placeOf(versions[i]));
    return true;
}

}  // namespace nordkeep
