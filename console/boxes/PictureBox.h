#pragma once

#include "console/boxes/PictureSettings.h"
#include "console/lists/WindowView.h"
#include "platform/EventLoop.h"
#include "platform/FileTree.h"

namespace nordkeep {

/// The picture, or the sequence of pictures, that stands on top of everything while an alarm is attended.
class PictureBox {
 public:
    PictureBox(const PictureSettings& settings, const FileTree& dataFolder, EventLoop& loop);

    void SetView(WindowView& view) { view_ = &view; }

    /// Replaces the picture of an earlier alarm.
    void Show(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech);
    void Close();
    /// The alarm has been ended.
    void CloseFor(std::int32_t filePointer);
    bool IsOpen() const { return isOpen_; }

    const Text& Caption() const { return caption_; }
    /// The picture file that is shown; empty when there is none or it cannot be read.
    const Text& Picture() const { return picture_; }
    /// Changes with each picture.
    unsigned Generation() const { return generation_; }
    /// What stands in place of a picture that cannot be shown; empty when the list is.
    Text Failure() const;

 private:
    void ShowNext();
    NativePath PathOf(const Text& entry) const;

    const PictureSettings& settings_;
    const FileTree& dataFolder_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::unique_ptr<Timer> change_;
    bool isOpen_ = false;
    std::int32_t filePointer_ = 0;
    Text caption_{};
    Text list_{};
    std::size_t next_ = 0;
    Text entry_{};
    Text picture_{};
    unsigned generation_ = 0;
};

}  // namespace nordkeep
