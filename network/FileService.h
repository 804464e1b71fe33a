#pragma once

#include "network/SharedPaths.h"
#include "runtime/DataFiles.h"

#include <cstdint>

namespace nordkeep {

/// The server's files for its clients. Whatever is refused looks like a file that is not there.
class FileService {
 public:
    FileService(const FileTree& dataFolder, TextView readableFolders) : paths_(dataFolder, readableFolders) {}

    /// The lines with their ends, at most as much as a frame carries.
    Text ReadTextFile(TextView path) const;
    Text ReadBinaryFile(TextView path) const;
    /// True when the file has been written.
    bool WriteTextFile(TextView path, TextView text) const;
    /// As FileDateToLong.
    std::int32_t FileTimeStamp(TextView path) const;
    /// The names, each with a "|" behind it, cut at a whole name to what a ShortString carries.
    Text ScanForFiles(TextView pattern) const;
    void MakeDataFolder(TextView path) const;

 private:
    SharedPaths paths_;
};

/// A write to such a path changes a translation set, which is then to be loaded again: a file with the ending
/// .IDCode or .TypeCode in the folder Settings.
bool IsTranslationFile(TextView path);
/// The main settings file: its values can count from now on.
bool IsMainSettings(TextView path);

}  // namespace nordkeep
