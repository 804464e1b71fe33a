#pragma once

#include "network/SharedPaths.h"
#include "runtime/DataFiles.h"

#include <cstdint>

namespace nordkeep {

/// The server's files for its clients. Whatever is refused looks like a file that is not there.
class FileService {
 public:
    FileService(const FileTree& dataFolder, TextView readableFolders)
        : dataFolder_(dataFolder), paths_(dataFolder, readableFolders) {}

    /// Whether a client may write there: comments and object information from anybody, as the alarm sheet
    /// needs; the files of sets, ports and settings from who edits (level 2); nothing else.
    bool MayWrite(TextView path, int level) const;
    /// Whether a client may read there: ports' settings, which hold passwords, only with level 2.
    bool MayRead(TextView path, int level) const;

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
    /// A place that a path leads to, below the data folder with "\" between the components.
    std::optional<Text> Inside(TextView path, PathKind kind) const;

    const FileTree& dataFolder_;
    SharedPaths paths_;
};

/// A write to such a path changes a translation set, which is then to be loaded again: a file with the ending
/// .IDCode or .TypeCode in the folder Settings.
bool IsTranslationFile(TextView path);
/// The main settings file.
bool IsMainSettings(TextView path);
/// It, or that of a port: its values can count from now on.
bool IsSettingsFile(TextView path);

}  // namespace nordkeep
