#include "runtime/Settings.h"

namespace nordkeep {
namespace {

constexpr TextView kMainFile = "Settings\\Nordkeep.INI";
// Files in use are the main file, one for each port and a few data code and zone files for each set.
constexpr std::size_t kMostCachedFiles = 512;

}  // namespace

const IniText& Settings::TextOf(const NativePath& path) const {
    const FileStamp stamp = StampOf(path);
    if (const auto known = cache_.find(path); known != cache_.end() && known->second.stamp == stamp) {
        return known->second.text;
    }
    if (cache_.size() >= kMostCachedFiles) cache_.clear();
    Cached& cached = cache_[path];
    cached.stamp = stamp;
    cached.text = IniText(stamp.Exists() ? ReadFile(path).value_or(Text()) : Text());
    return cached.text;
}

Text Settings::ReadIni(TextView section, TextView key, TextView byDefault, TextView fileName) const {
    const NativePath path = dataFolder_.Resolve(fileName.empty() ? kMainFile : fileName);
    return TextOf(path).Value(section, key).value_or(Text(byDefault));
}

Text Settings::ReadMainIni(TextView section, TextView key, TextView byDefault) const {
    if (serverText_) return ReadIniFromText(*serverText_, section, key, byDefault);
    return ReadIni(section, key, byDefault);
}

Text Settings::ReadPortIni(TextView section, TextView key, TextView byDefault, TextView portName) const {
    return ReadIni(section, key, byDefault, "Settings\\" + Text(portName) + ".ini");
}

bool Settings::WriteIni(TextView section, TextView key, TextView value, TextView fileName) {
    const NativePath path = dataFolder_.Resolve(fileName.empty() ? kMainFile : fileName);
    Text changed = TextOf(path).WithValue(section, key, value);
    if (!ReplaceFile(path, changed)) return false;
    cache_[path] = {StampOf(path), IniText(std::move(changed))};
    return true;
}

std::vector<Text> Settings::ListKeys(TextView section, TextView fileName) const {
    return TextOf(dataFolder_.Resolve(fileName.empty() ? kMainFile : fileName)).Keys(section);
}

}  // namespace nordkeep
