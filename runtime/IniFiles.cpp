#include "runtime/IniFiles.h"

namespace nordkeep {
namespace {

// Files in use are the main file, one for each port and a few data code and zone files for each set.
constexpr std::size_t kMostCachedFiles = 512;

}  // namespace

const IniText& IniFiles::TextOf(const NativePath& path) {
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

bool IniFiles::Write(const NativePath& path, TextView section, TextView key, TextView value) {
    TextOf(path);
    if (OverwriteValue(path, section, key, value)) return true;
    Text changed = TextOf(path).WithValue(section, key, value);
    if (!ReplaceFile(path, changed)) return false;
    cache_[path] = {StampOf(path), IniText(std::move(changed))};
    return true;
}

// The alarm number is written at every event. A few bytes in the middle of a file that keeps its length
// cannot lose the file in a crash, and cost a tenth of a new file.
bool IniFiles::OverwriteValue(const NativePath& path, TextView section, TextView key, TextView value) {
    Cached& cached = cache_[path];
    const auto line = cached.text.Overwrite(section, key, value);
    if (!line) return false;
    const auto offset = static_cast<std::size_t>(line->data() - cached.text.Content().data());
    const bool isWritten = OverwriteFile(path, offset, *line);
    cached.stamp = StampOf(path);
    if (!isWritten) cache_.erase(path);
    return isWritten;
}

}  // namespace nordkeep
