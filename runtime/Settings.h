#pragma once

#include "platform/FileTree.h"
#include "platform/Text.h"
#include "runtime/IniText.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// The settings files below the data folder. Every call sees the present content of the file: its stamp is
/// asked each time, and the parsed form is kept as long as the stamp stays.
class Settings {
 public:
    explicit Settings(const FileTree& dataFolder) : dataFolder_(dataFolder) {}

    /// A key of a local settings file; `fileName` is relative to the data folder, empty for the main file.
    /// `byDefault` comes back untouched when file, section or key is missing.
    Text ReadIni(TextView section, TextView key, TextView byDefault, TextView fileName = {}) const;
    /// A key that the whole centre shares: of the local main file, on a client of the server's.
    Text ReadMainIni(TextView section, TextView key, TextView byDefault) const;
    /// A key of Settings\<port name>.ini.
    Text ReadPortIni(TextView section, TextView key, TextView byDefault, TextView portName) const;
    /// Writes to the local file. False when it could not be written.
    bool WriteIni(TextView section, TextView key, TextView value, TextView fileName = {});
    /// The keys of a section in file order.
    std::vector<Text> ListKeys(TextView section, TextView fileName = {}) const;

    /// From now on ReadMainIni answers from this text, with the rules of ReadIniFromText.
    void UseServerText(Text text) { serverText_ = std::move(text); }

 private:
    struct Cached {
        FileStamp stamp{};
        IniText text{};
    };

    const IniText& TextOf(const NativePath& path) const;
    bool OverwriteValue(const NativePath& path, TextView section, TextView key, TextView value);

    const FileTree& dataFolder_;
    std::optional<Text> serverText_{};
    mutable std::unordered_map<NativePath, Cached> cache_{};
};

}  // namespace nordkeep
