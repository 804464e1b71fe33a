#include "console/boxes/ObjectFiles.h"

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

}  // namespace

Text InformationFile(TextView set, TextView idCode) {
    return FileIn(FolderOf("Information", set), idCode);
}

Text TypeInformationFile(TextView set, TextView idCode, TextView typeCode) {
    const Text folder = FolderOf("Information", set) + "\\";
    return FileIn(folder + (IsSafeComponent(idCode) ? Text(idCode) : FileSafeName(idCode)), typeCode);
}

Text CommentFile(TextView set, TextView idCode) {
    return FileIn(FolderOf("Comments", set), idCode);
}

Text ObjectLogFile(TextView objectName) {
    return "LogFiles\\Objects\\" + FileSafeName(objectName) + ".LOG";
}

}  // namespace nordkeep
