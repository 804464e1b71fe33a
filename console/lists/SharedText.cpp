#include "console/lists/SharedText.h"

namespace nordkeep {

TextView WithoutLastLineEnds(TextView text) {
    const std::size_t last = text.find_last_not_of("\r\n");
    return text.substr(0, last == TextView::npos ? 0 : last + 1);
}

void SharedText::Load(Text path) {
    path_ = std::move(path);
    // The stamp first: a write between the two requests is then noticed when saving.
    stamp_ = files_.FileTimeStamp(path_);
    const FileContent file = files_.LoadTextFile(path_);
    isUnreadable_ = file.state == FileContent::State::Unreadable;
    content_ = WithoutLastLineEnds(file.bytes);
}

void SharedText::MakeFolders() {
    for (std::size_t at = path_.find('\\'); at != Text::npos; at = path_.find('\\', at + 1)) {
        // The first level exists in every data folder, and is not made anew by each save.
        if (path_.find('\\') != at) files_.MakeDataFolder(path_.substr(0, at));
    }
}

// A stamp counts whole seconds, so that two writes in one second have the same.
bool SharedText::HasChanged() {
    const bool isInDoubt = Exists() && content_.empty();
    if (isUnreadable_ || isInDoubt) {
        const Text known = content_;
        Load(path_);
        return content_ != known;
    }
    if (files_.FileTimeStamp(path_) != stamp_) return true;
    const FileContent file = files_.LoadTextFile(path_);
    isUnreadable_ = file.state == FileContent::State::Unreadable;
    return WithoutLastLineEnds(file.bytes) != content_;
}

bool SharedText::Write(TextView text) {
    const TextView content = WithoutLastLineEnds(text);
    files_.WriteTextFile(path_, content);
    const bool isThere = files_.ReadTextFile(path_) == WithLineEnds(Text(content) + "\r\n");
    if (!isThere) return false;
    content_ = WithoutLastLineEnds(WithLineEnds(content));
    stamp_ = files_.FileTimeStamp(path_);
    return true;
}

}  // namespace nordkeep
