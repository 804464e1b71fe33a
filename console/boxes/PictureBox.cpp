#include "console/boxes/PictureBox.h"

#include "platform/Files.h"

namespace nordkeep {

PictureBox::PictureBox(const PictureSettings& settings, const FileTree& dataFolder, EventLoop& loop)
    : settings_(settings), dataFolder_(dataFolder), change_(loop.NewTimer([this] {
          ShowNext();
          view_->Refresh();
      })) {}

void PictureBox::Show(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech) {
    filePointer_ = filePointer;
    caption_ = caption;
    list_ = isFollowedBySpeech ? settings_.SpeechPictures : settings_.AlarmPictures;
    next_ = 0;
    ShowNext();
    const int time = isFollowedBySpeech ? settings_.SpeechPictureTime : settings_.AlarmPictureTime;
    change_->Stop();
    if (time > 0 && !entry_.empty()) change_->Start(time);
    isOpen_ = true;
    view_->Show(OpenedBy::Itself);
}

void PictureBox::ShowNext() {
    entry_ = TrimBlanks(GetField(list_, next_, ","));
    if (entry_.empty() && next_ > 0) {
        next_ = 0;
        entry_ = TrimBlanks(GetField(list_, next_, ","));
    }
    ++next_;
    picture_ = entry_.empty() ? Text() : ReadFile(PathOf(entry_)).value_or(Text());
    ++generation_;
}

NativePath PictureBox::PathOf(const Text& entry) const {
    const bool isPath = entry.find('\\') != Text::npos;
    return isPath ? dataFolder_.ResolveSetting(entry) : dataFolder_.Resolve(entry);
}

void PictureBox::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    change_->Stop();
    picture_.clear();
    view_->Close();
}

void PictureBox::CloseFor(std::int32_t filePointer) {
    if (filePointer_ == filePointer) Close();
}

Text PictureBox::Failure() const {
    return entry_.empty() ? Text() : "Picture '" + entry_ + "' not found...";
}

}  // namespace nordkeep
