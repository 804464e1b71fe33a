#include "network/RemoteDataFiles.h"

#include "network/FileDates.h"
#include "runtime/Fields.h"

namespace nordkeep {

Text RemoteDataFiles::ReadTextFile(TextView path) {
    return link_.RequestTextFile(path).value_or(Text());
}

FileContent RemoteDataFiles::LoadTextFile(TextView path) {
    std::optional<Text> text = link_.RequestTextFile(path);
    if (!text) return {.state = FileContent::State::Unreadable};
    return {.state = FileContent::State::Read, .bytes = std::move(*text)};
}

Text RemoteDataFiles::ReadBinaryFile(TextView path) {
    return link_.RequestBinaryFile(path).value_or(Text());
}

void RemoteDataFiles::WriteTextFile(TextView path, TextView text) {
    link_.SendToServer(Message::WriteTextFile, PayloadOf(FileToWrite{Text(path), Text(text)}));
}

OleDate RemoteDataFiles::FileTimeStamp(TextView path) {
    return LongToFileDate(link_.RequestFileTime(path).value_or(0));
}

std::vector<Text> RemoteDataFiles::ScanForFiles(TextView pattern) {
    std::vector<Text> names = Split(link_.RequestScan(pattern).value_or(Text()), '|');
    std::erase_if(names, [](const Text& name) { return name.empty(); });
    return names;
}

void RemoteDataFiles::MakeDataFolder(TextView path) {
    link_.RequestMakeDir(path);
}

}  // namespace nordkeep
