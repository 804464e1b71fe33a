#include "console/boxes/MapBox.h"

#include "platform/Files.h"
#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kFlashMs = 500;
constexpr int kCaptionZoom = 3300;
constexpr int kCaptionCannotShow = 3301;
constexpr int kCaptionOtherCurrent = 5198;

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
    about_ = AlarmText(filePointer);
    otherCurrent_.clear();
    title_ = reference_.BaseName() + " - Nordkeep";
    picture_ = needs_.pictures.Read(reference_);
    ++generation_;
    size_ = {};
    mouse_.reset();
    zoom_ = LimitZoom(needs_.defaultZoom);
    isOpen_ = true;
    if (reference_.place) flash_->Start(kFlashMs);
    view_->Show(by);
}

Text FetchedMaps::Read(const MapReference& reference) {
    const Text path = reference.Path();
    if (reference.file.find(':') != Text::npos) return files_.ReadBinaryFile(path);
    const NativePath kept = dataFolder_.Resolve("Settings\\Temp\\" + FileSafeName(reference.BaseName()));
    const OleDate stamp = files_.FileTimeStamp(path);
    if (path == fetchedPath_ && stamp == fetchedStamp_ && !stamp.IsNever()) {
        if (auto bytes = ReadFile(kept)) return *std::move(bytes);
    }
    Text bytes = files_.ReadBinaryFile(path);
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

Text MapBox::AlarmText(std::int32_t filePointer) const {
    const cAlarm* alarm = filePointer == 0 ? nullptr : needs_.store.FindAlarmByKey(filePointer);
    if (!alarm) return {};
    const OleDate time = alarm->m_TimeStamp.IsNever() ? alarm->m_ArrivedTime : alarm->m_TimeStamp;
    Text text = alarm->m_TranslatedIDCode.empty() ? alarm->m_IdCode : alarm->m_TranslatedIDCode;
    if (!alarm->m_TranslatedTypeCode.empty()) text += ", " + alarm->m_TranslatedTypeCode;
    return text + ", " + FormatDate(time, "YYYY-MM-DD HH:NN:SS");
}

void MapBox::NoteCurrent(std::int32_t filePointer) {
    const bool isOther = isOpen_ && filePointer_ != 0 && filePointer != 0 && filePointer != filePointer_;
    const Text said = isOther ? needs_.captions(kCaptionOtherCurrent, {AlarmText(filePointer)}) : Text();
    if (said == otherCurrent_) return;
    otherCurrent_ = said;
    view_->Refresh();
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
    Text text = about_.empty() ? Text() : about_ + "   ";
    text += needs_.captions(kCaptionZoom) + ": " + std::to_string(zoom_) + " %";
    if (mouse_) text += "   X: " + std::to_string(mouse_->x) + "   Y: " + std::to_string(mouse_->y);
    return text;
}

}  // namespace nordkeep
