#pragma once

#include "platform/FileTree.h"
#include "platform/Files.h"

#include <vector>

namespace nordkeep {

/// The centre's files as the console works on them: comments, information, maps, settings. They lie below the
/// data folder of this copy, or on a client below that of its server; paths are the same for both. Nothing
/// here fails loudly.
class DataFiles {
 public:
    virtual ~DataFiles() = default;
    /// The lines of a text file, each ended by CR LF; empty when there is no file. A path that holds a ":" is
    /// absolute.
    virtual Text ReadTextFile(TextView path) = 0;
    /// As ReadTextFile, and whether there is no file or it cannot be read. A server answers for both with an
    /// empty text, and that is what it counts as here: an empty text of a file that has a stamp is in doubt.
    virtual FileContent LoadTextFile(TextView path) = 0;
    /// The bytes of a file; empty when there is none. A path that holds a ":" is absolute.
    virtual Text ReadBinaryFile(TextView path) = 0;
    /// Replaces or makes a file with the text and one CR LF behind it; never a file that cannot be read.
    virtual void WriteTextFile(TextView path, TextView text) = 0;
    /// Never for a missing file. Such a time compares only with others from the same place.
    virtual OleDate FileTimeStamp(TextView path) = 0;
    /// Names of the plain files that fit the mask in the last component; all for an empty one.
    virtual std::vector<Text> ScanForFiles(TextView pattern) = 0;
    /// Makes one level; an existing folder is no failure.
    virtual void MakeDataFolder(TextView path) = 0;
};

/// The bytes of a text file as ReadTextFile gives them: lines end in CR LF, CR or LF, and a last line without
/// an end gets one.
Text WithLineEnds(TextView bytes);

/// A pattern of ScanForFiles: the folder in front of the last separator, and the mask behind it.
struct ScanPattern {
    TextView folder{};
    TextView mask{};
};
ScanPattern SplitScanPattern(TextView pattern);
/// "*.*" fits every name, as on the systems that the pattern comes from; hidden names (a dot in front) fit
/// none.
bool FitsScan(TextView name, TextView mask);

/// The files of this copy.
class LocalDataFiles final : public DataFiles {
 public:
    explicit LocalDataFiles(const FileTree& dataFolder) : dataFolder_(dataFolder) {}

    Text ReadTextFile(TextView path) override;
    FileContent LoadTextFile(TextView path) override;
    Text ReadBinaryFile(TextView path) override;
    void WriteTextFile(TextView path, TextView text) override;
    OleDate FileTimeStamp(TextView path) override;
    std::vector<Text> ScanForFiles(TextView pattern) override;
    void MakeDataFolder(TextView path) override;

 private:
    NativePath PathToRead(TextView path) const;

    const FileTree& dataFolder_;
};

}  // namespace nordkeep
