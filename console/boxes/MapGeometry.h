#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <optional>

namespace nordkeep {

/// A place on a map, in the pixels of the picture at 100 %, or on the screen.
struct MapPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const MapPoint&, const MapPoint&) = default;
};
struct MapSize {
    int width = 0;
    int height = 0;
    friend bool operator==(const MapSize&, const MapSize&) = default;
};

/// What an object's map name says: "file/x/y".
struct MapReference {
    Text file{};                      // below Maps\, or absolute when it holds a ":"
    std::optional<MapPoint> place{};  // none when a number is missing or none
    /// The path for DataFiles.
    Text Path() const;
    /// The last component of the file's name.
    Text BaseName() const;
};
MapReference ParseMapReference(TextView reference);
/// The same as an object's map name says it.
Text ReferenceText(TextView file, MapPoint place);

inline constexpr int kZoomStep = 20;  // percent
inline constexpr int kLowestZoom = 20;
inline constexpr int kHighestZoom = 400;
/// Within the limits and on a step.
int LimitZoom(int percent);

MapSize ScaledSize(MapSize picture, int zoom);
/// Where a place lies in the scaled picture, from its left top.
MapPoint ScaledPlace(MapPoint place, int zoom);
/// The place under a point of the scaled picture: what ScaledPlace turns into this point, or next to it.
MapPoint PlaceUnder(MapPoint scaled, int zoom);
/// The scroll positions at which the place stands in the middle of a view, as far as the picture reaches.
MapPoint ScrollToCenter(MapPoint place, int zoom, MapSize picture, MapSize view);

}  // namespace nordkeep
