#include "runtime/IniFiles.h"

namespace nordkeep {
namespace {

// Files in use are the main file, one for each port and a few data code and zone files for each set.
constexpr std::size_t kMostCachedFiles = 512;

}  // namespace

IniFiles::Cached& IniFiles::Present(const NativePath& path) {
    const std::uint64_t look = folder_.PresentLook();
    const auto known = cache_.find(path);
    const bool isKept = known != cache_.end() && !known->second.isToReadAgain;
    if (isKept && look != 0 && known->second.look == look) return known->second;
    const FileStamp stamp = StampOf(path);
    if (isKept && known->second.stamp == stamp) {
        known->second.look = look;
        return known->second;
    }
    FileContent content = LoadFile(path);
    if (cache_.size() >= kMostCachedFiles && !cache_.contains(path)) cache_.clear();
    Cached& cached = cache_[path];
    NoteReadable(path, cached, content);
    cached.isToReadAgain = cached.isUnreadable;
    if (cached.isUnreadable) return cached;
    cached.stamp = stamp;
    cached.look = look;
    cached.text = IniText(std::move(content.bytes));
    return cached;
}

void IniFiles::NoteReadable(const NativePath& path, Cached& cached, const FileContent& content) {
    const bool isUnreadable = content.state == FileContent::State::Unreadable;
    if (isUnreadable == cached.isUnreadable) return;
    cached.isUnreadable = isUnreadable;
    if (!listener_) return;
    if (isUnreadable) {
        listener_->CannotBeRead(path, content.reason);
    } else {
        listener_->CanBeReadAgain(path);
    }
}

bool IniFiles::Write(const NativePath& path, TextView section, TextView key, TextView value) {
    if (Present(path).isUnreadable) return false;
    if (OverwriteValue(path, section, key, value)) return true;
    const Cached& present = Present(path);
    if (present.isUnreadable) return false;
    Text changed = present.text.WithValue(section, key, value);
    if (!ReplacePrivateFile(path, changed)) return false;
    cache_[path] = {.stamp = StampOf(path), .text = IniText(std::move(changed))};
    return true;
}

// The alarm number is written at every event. A few bytes in the middle of a file that keeps its length
// cannot lose the file in a crash, and cost a tenth of a new file.
bool IniFiles::OverwriteValue(const NativePath& path, TextView section, TextView key, TextView value) {
    Cached& cached = cache_[path];
    const auto line = cached.text.Overwrite(section, key, value);
    if (!line) return false;
    const auto offset = static_cast<std::size_t>(line->data() - cached.text.Content().data());
    const FileStamp before = cached.stamp;
    const bool isWritten = cached.file.Overwrite(path, before, offset, *line);
    cached.stamp = StampOf(path);
    // Else somebody else has written to it or put another in its place meanwhile.
    const bool isOurs = cached.stamp.inode == before.inode && cached.stamp.size == before.size;
    cached.isToReadAgain = !isWritten || !isOurs;
    return isWritten;
}

}  // namespace nordkeep
