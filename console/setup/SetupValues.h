#pragma once

#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/setup/Descriptor.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// The settings files as the set-up reads and writes them: the main file of this copy, and on a client that
/// of the server for what the whole centre shares.
class SetupValues {
 public:
    struct Needs {
        Settings& files;
        DataFiles& centreFiles;
        const OperatorState& state;
    };
    explicit SetupValues(const Needs& needs) : needs_(needs), server_(needs.centreFiles) {}

    /// Fetches what lies at the server. The files of this copy are asked at each look-up.
    void Load();
    /// What the file says, else the default.
    Text Value(const DescribedKey& key) const;
    /// Whether a key of this scope can be written: the server's file has to be at hand.
    bool CanWrite(SettingScope scope) const;

    struct Change {
        const DescribedKey* key = nullptr;
        Text value{};
    };
    /// Writes the values; false when one of the files could not be written.
    bool Write(const std::vector<Change>& changes);

 private:
    bool IsAtServer(SettingScope scope) const;
    bool WriteToServer(const std::vector<Change>& changes);

    Needs needs_;
    SharedText server_;
    IniText serverText_{};
};

/// The value as it has to stand in the file to be read as it was typed: blanks at its ends and quotes around
/// it are cut by the reader.
Text ValueInFile(TextView value);

}  // namespace nordkeep
