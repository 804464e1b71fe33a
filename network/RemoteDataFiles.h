#pragma once

#include "network/ServerLink.h"
#include "runtime/DataFiles.h"

namespace nordkeep {

/// The files of the server, for its client. While a request is pending, and when the connection is lost,
/// every file looks missing.
class RemoteDataFiles final : public DataFiles {
 public:
    explicit RemoteDataFiles(ServerLink& link) : link_(link) {}

    Text ReadTextFile(TextView path) override;
    FileContent LoadTextFile(TextView path) override;
    Text ReadBinaryFile(TextView path) override;
    /// Does not wait, and cannot learn of a failure.
    void WriteTextFile(TextView path, TextView text) override;
    /// An hour before the file's time by the server's clock.
    OleDate FileTimeStamp(TextView path) override;
    std::vector<Text> ScanForFiles(TextView pattern) override;
    void MakeDataFolder(TextView path) override;

 private:
    ServerLink& link_;
};

}  // namespace nordkeep
