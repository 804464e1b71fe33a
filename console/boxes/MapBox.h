#pragma once

#include "console/boxes/MapGeometry.h"
#include "console/lists/Captions.h"
#include "console/lists/WindowView.h"
#include "platform/EventLoop.h"
#include "platform/FileTree.h"
#include "runtime/DataFiles.h"
#include "store/EventStore.h"

namespace nordkeep {

/// Where the pictures of maps come from.
class MapPictures {
 public:
    virtual ~MapPictures() = default;
    /// The picture file; empty when there is none.
    virtual Text Read(const MapReference& reference) = 0;
};

/// Maps on this machine.
class OwnMaps final : public MapPictures {
 public:
    explicit OwnMaps(DataFiles& files) : files_(files) {}
    Text Read(const MapReference& reference) override { return files_.ReadBinaryFile(reference.Path()); }

 private:
    DataFiles& files_;
};

/// Maps of a client's server. One travels once, and stays as long as the server's file does.
class FetchedMaps final : public MapPictures {
 public:
    /// `dataFolder` is that of the client, which keeps what it has fetched there.
    FetchedMaps(DataFiles& files, const FileTree& dataFolder) : files_(files), dataFolder_(dataFolder) {}
    Text Read(const MapReference& reference) override;

 private:
    DataFiles& files_;
    const FileTree& dataFolder_;
    Text fetchedPath_{};
    OleDate fetchedStamp_{};
};

/// The map of an alarm or an object, with a flashing cross on the place. There is one.
class MapBox {
 public:
    struct Needs {
        MapPictures& pictures;
        const Captions& captions;
        EventLoop& loop;
        const EventStore& store;
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
    /// Whose place it is: object, type and time of its alarm; empty for a map without one.
    const Text& About() const { return about_; }
    /// The alarm that the operator is at now, or 0.
    void NoteCurrent(std::int32_t filePointer);
    /// Says so when that is another one than the map's; else empty.
    const Text& OtherCurrent() const { return otherCurrent_; }
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
    Text AlarmText(std::int32_t filePointer) const;

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::unique_ptr<Timer> flash_;
    bool isOpen_ = false;
    std::int32_t filePointer_ = 0;
    MapReference reference_{};
    Text about_{};
    Text otherCurrent_{};
    Text title_{};
    Text picture_{};
    unsigned generation_ = 0;
    MapSize size_{};
    int zoom_ = 100;
    bool isFlashWhite_ = false;
    std::optional<MapPoint> mouse_{};
};

}  // namespace nordkeep
