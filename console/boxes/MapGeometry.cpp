#include "console/boxes/MapGeometry.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

/// Rounded to the nearest; wide, since places come from data.
int Scaled(int value, int zoom) {
    const std::int64_t product = std::int64_t{value} * zoom;
    return static_cast<int>(
        std::clamp<std::int64_t>((product + (product < 0 ? -50 : 50)) / 100, -1'000'000'000, 1'000'000'000));
}

std::optional<int> Coordinate(TextView field) {
    const TextView digits = TrimBlanksAndTabs(field);
    if (!IsNumeric(digits)) return std::nullopt;
    return LeadingInt32(digits);
}

int ScrollTo(int place, int zoom, int picture, int view) {
    const int range = std::max(0, Scaled(picture, zoom) - view);
    return std::clamp(Scaled(place, zoom) - view / 2, 0, range);
}

}  // namespace

Text MapReference::Path() const {
    return file.find(':') != Text::npos ? file : "Maps\\" + file;
}

Text MapReference::BaseName() const {
    const std::size_t separator = file.find_last_of("\\/:");
    return separator == Text::npos ? file : file.substr(separator + 1);
}

Text ReferenceText(TextView file, MapPoint place) {
    return Text(file) + "/" + std::to_string(place.x) + "/" + std::to_string(place.y);
}

MapReference ParseMapReference(TextView reference) {
    MapReference map{.file = Text(TrimBlanks(GetField(reference, 0, "/")))};
    const std::optional<int> x = Coordinate(GetField(reference, 1, "/"));
    const std::optional<int> y = Coordinate(GetField(reference, 2, "/"));
    if (x && y) map.place = MapPoint{*x, *y};
    return map;
}

int LimitZoom(int percent) {
    const int limited = std::clamp(percent, kLowestZoom, kHighestZoom);
    return (limited + kZoomStep / 2) / kZoomStep * kZoomStep;
}

MapSize ScaledSize(MapSize picture, int zoom) {
    return {std::max(1, Scaled(picture.width, zoom)), std::max(1, Scaled(picture.height, zoom))};
}

MapPoint ScaledPlace(MapPoint place, int zoom) {
    return {Scaled(place.x, zoom), Scaled(place.y, zoom)};
}

MapPoint PlaceUnder(MapPoint scaled, int zoom) {
    const auto back = [zoom](int value) {
        return static_cast<int>((std::int64_t{value} * 100 + zoom / 2) / zoom);
    };
    return {back(scaled.x), back(scaled.y)};
}

MapPoint ScrollToCenter(MapPoint place, int zoom, MapSize picture, MapSize view) {
    return {ScrollTo(place.x, zoom, picture.width, view.width),
            ScrollTo(place.y, zoom, picture.height, view.height)};
}

}  // namespace nordkeep
