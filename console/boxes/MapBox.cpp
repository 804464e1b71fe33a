#include "console/boxes/MapBox.h"

#include "platform/Files.h"

namespace nordkeep {
namespace {

constexpr int kFlashMs = 500;
constexpr int kCaptionZoom = 3300;
constexpr int kCaptionCannotShow = 3301;

}  // namespace

MapBox::MapBox(const Needs& needs)
    : needs_(needs), flash_(needs.loop.NewTimer([this] {
          isFlashWhite_ = !isFlashWhite_;
          view_->Refresh();
      })) {}

void MapBox::Open(const Text& reference, std::int32_t filePointer, OpenedBy by) {
    reference_ = ParseMapReference(reference);
    if (reference_.file.empty()) return;
    filePointer_ = filePointer;
    title_ = reference_.BaseName() + " - Nordkeep";
    picture_ = FetchPicture();
    ++generation_;
    size_ = {};
    mouse_.reset();
    zoom_ = LimitZoom(needs_.defaultZoom);
    isOpen_ = true;
    if (reference_.place) flash_->Start(kFlashMs);
    view_->Show(by);
}

// A map travels to a client once, and stays as long as the server's file does.
Text MapBox::FetchPicture() {
    const Text path = reference_.Path();
    if (needs_.role != Role::Client || reference_.file.find(':') != Text::npos) {
        return needs_.files.ReadBinaryFile(path);
    }
    const NativePath kept =
        needs_.dataFolder.Resolve("Settings\\Temp\\" + FileSafeName(reference_.BaseName()));
    const OleDate stamp = needs_.files.FileTimeStamp(path);
    if (path == fetchedPath_ && stamp == fetchedStamp_ && !stamp.IsNever()) {
        if (auto bytes = ReadFile(kept)) return *std::move(bytes);
    }
    Text bytes = needs_.files.ReadBinaryFile(path);
    const bool isKept = !bytes.empty() && ReplaceFile(kept, bytes);
    fetchedPath_ = isKept ? path : Text();
    fetchedStamp_ = stamp;
    return bytes;
}

void MapBox::Close() {
    if (!isOpen_) return;
    isOpen_ = false;
    filePointer_ = 0;
    flash_->Stop();
    picture_.clear();
    view_->Close();
}

void MapBox::SetPictureSize(MapSize size) {
    size_ = size;
    if (size_.width < 1 || size_.height < 1) flash_->Stop();
}

Text MapBox::Failure() const {
    return size_.width > 0 ? Text() : needs_.captions(kCaptionCannotShow, {reference_.BaseName()});
}

void MapBox::AdjustZoom(char key) {
    if (key == '+') SetZoom(zoom_ + kZoomStep);
    if (key == '-') SetZoom(zoom_ - kZoomStep);
}

void MapBox::SetZoom(int percent) {
    zoom_ = LimitZoom(percent);
    view_->Refresh();
}

std::optional<MapPoint> MapBox::FindAlarmCenter(MapSize view) const {
    if (!reference_.place) return std::nullopt;
    return ScrollToCenter(*reference_.place, zoom_, size_, view);
}

void MapBox::MoveMouse(MapPoint scaled) {
    mouse_ = PlaceUnder(scaled, zoom_);
}

Text MapBox::StatusText() const {
    Text text = needs_.captions(kCaptionZoom) + ": " + std::to_string(zoom_) + " %";
    if (mouse_) text += "   X: " + std::to_string(mouse_->x) + "   Y: " + std::to_string(mouse_->y);
    return text;
}

}  // namespace nordkeep
