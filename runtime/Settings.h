#pragma once

#include "platform/FileTree.h"
#include "platform/Text.h"
#include "runtime/IniFiles.h"

#include <memory>
#include <optional>
#include <vector>

namespace nordkeep {

/// The settings files below the data folder. Every call sees the present content of the file; of one that is
/// there and cannot be read, what was known of it before.
class Settings {
 public:
    explicit Settings(const FileTree& dataFolder) : dataFolder_(dataFolder) {}

    /// The listener outlives this object or is taken away with nullptr.
    void SetListener(SettingsListener* listener) { files_->SetListener(listener); }

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
    NativePath PathOf(TextView fileName) const;
    const NativePath& MainPath() const;

    const FileTree& dataFolder_;
    std::optional<Text> serverText_{};
    // An object of its own: a look-up reads a file that has changed anew, which changes no setting.
    struct Place {
        std::uint64_t look = 0;
        NativePath path{};
    };
    const std::unique_ptr<Place> mainPlace_ = std::make_unique<Place>();
    const std::unique_ptr<IniFiles> files_ = std::make_unique<IniFiles>(dataFolder_);
};

}  // namespace nordkeep
