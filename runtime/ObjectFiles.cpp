#include "runtime/ObjectFiles.h"

#include "platform/FileTree.h"

namespace nordkeep {
namespace {

/// The folder with a set's name behind it, each level of the name fit for a folder.
Text FolderOf(TextView top, TextView set) {
    Text folder(top);
    std::size_t start = 0;
    while (start < set.size()) {
        const std::size_t end = std::min(set.find_first_of("\\/", start), set.size());
        const TextView level = set.substr(start, end - start);
        if (!level.empty()) folder.append("\\").append(IsSafeComponent(level) ? level : FileSafeName(level));
        start = end + 1;
    }
    return folder;
}

Text FileIn(const Text& folder, TextView name) {
    const Text file = Text(name) + ".TXT";
    return folder + "\\" + (IsSafeComponent(file) ? file : FileSafeName(name) + ".TXT");
}

/// A code comes from a telegram: one that would lead elsewhere names no file.
bool HasFile(TextView code) {
    return IsSafeComponent(code) && code.find(':') == TextView::npos;
}

}  // namespace

Text InformationFile(TextView set, TextView idCode) {
    if (set.empty() || !HasFile(idCode)) return {};
    return FolderOf("Information", set) + "\\" + Text(idCode) + ".TXT";
}

Text TypeInformationFile(TextView set, TextView idCode, TextView typeCode) {
    if (set.empty() || !HasFile(idCode) || !HasFile(typeCode)) return {};
    return FolderOf("Information", set) + "\\" + Text(idCode) + "\\" + Text(typeCode) + ".TXT";
}

Text CommentFile(TextView set, TextView idCode) {
    return FileIn(FolderOf("Comments", set), idCode);
}

Text ObjectLogFile(TextView objectName) {
    return "LogFiles\\Objects\\" + FileSafeName(objectName) + ".LOG";
}

}  // namespace nordkeep
