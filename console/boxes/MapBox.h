#pragma once

#include "console/boxes/MapGeometry.h"
#include "console/lists/Captions.h"
#include "console/lists/WindowView.h"
#include "platform/EventLoop.h"
#include "platform/FileTree.h"
#include "runtime/DataFiles.h"
#include "runtime/Role.h"

namespace nordkeep {

/// The map of an alarm or an object, with a flashing cross on the place. There is one.
class MapBox {
 public:
    struct Needs {
        DataFiles& files;            // where the maps are: on a client those of its server
        const FileTree& dataFolder;  // of this copy; a client keeps what it has fetched there
        const Captions& captions;
        EventLoop& loop;
        Role role = Role::StandAlone;
        int defaultZoom = 100;
    };
    explicit MapBox(const Needs& needs);

    void SetView(WindowView& view) { view_ = &view; }

    /// Fetches and shows a map; `filePointer` is that of its alarm, or 0.
    void Open(const Text& reference, std::int32_t filePointer, OpenedBy by);
    void Close();
    bool IsOpen() const { return isOpen_; }
    std::int32_t FilePointer() const { return filePointer_; }

    const Text& Title() const { return title_; }
    /// The picture file; changes with `Generation`.
    const Text& Picture() const { return picture_; }
    unsigned Generation() const { return generation_; }
    /// From the view, as soon as it knows; an empty size means that the picture cannot be shown.
    void SetPictureSize(MapSize size);
    MapSize PictureSize() const { return size_; }
    /// What to show in place of a picture that cannot be shown; empty when it can.
    Text Failure() const;

    int Zoom() const { return zoom_; }
    /// "+" and "-" are a step; other keys do nothing.
    void AdjustZoom(char key);
    void SetZoom(int percent);

    const std::optional<MapPoint>& Place() const { return reference_.place; }
    /// The cross is white, else red.
    bool IsFlashWhite() const { return isFlashWhite_; }
    /// Scroll positions that bring the place to the middle of a view; none without a place.
    std::optional<MapPoint> FindAlarmCenter(MapSize view) const;

    /// The mouse is over this point of the scaled picture.
    void MoveMouse(MapPoint scaled);
    Text StatusText() const;

 private:
    Text FetchPicture();

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::unique_ptr<Timer> flash_;
    bool isOpen_ = false;
    std::int32_t filePointer_ = 0;
    MapReference reference_{};
    Text title_{};
    Text picture_{};
    unsigned generation_ = 0;
    MapSize size_{};
    int zoom_ = 100;
    bool isFlashWhite_ = false;
    std::optional<MapPoint> mouse_{};

    // The file of the last fetched map, and whose it is.
    Text fetchedPath_{};
    OleDate fetchedStamp_{};
};

}  // namespace nordkeep
