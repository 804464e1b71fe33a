#include "runtime/Settings.h"

namespace nordkeep {
namespace {

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";

}  // namespace

NativePath Settings::PathOf(TextView fileName) const {
    return fileName.empty() ? MainPath() : dataFolder_.Resolve(fileName);
}

// Every event asks for it several times.
const NativePath& Settings::MainPath() const {
    const std::uint64_t look = dataFolder_.PresentLook();
    if (look == 0 || mainPlace_->look != look) *mainPlace_ = {look, dataFolder_.Resolve(kMainFile)};
    return mainPlace_->path;
}

Text Settings::ReadIni(TextView section, TextView key, TextView byDefault, TextView fileName) const {
    return files_->TextOf(PathOf(fileName)).Value(section, key).value_or(Text(byDefault));
}

Text Settings::ReadMainIni(TextView section, TextView key, TextView byDefault) const {
    if (serverText_) return ReadIniFromText(*serverText_, section, key, byDefault);
    return ReadIni(section, key, byDefault);
}

Text Settings::ReadPortIni(TextView section, TextView key, TextView byDefault, TextView portName) const {
    return ReadIni(section, key, byDefault, "Settings\\" + Text(portName) + ".ini");
}

bool Settings::WriteIni(TextView section, TextView key, TextView value, TextView fileName) {
    return files_->Write(PathOf(fileName), section, key, value);
}

std::vector<Text> Settings::ListKeys(TextView section, TextView fileName) const {
    return files_->TextOf(PathOf(fileName)).Keys(section);
}

}  // namespace nordkeep
