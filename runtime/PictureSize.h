#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// Pixels of a picture.
struct PictureSize {
    int width = 0;
    int height = 0;
};
/// As the front of a PNG, JPEG, GIF or BMP file says it; none for anything else.
std::optional<PictureSize> SizeOfPicture(TextView bytes);

}  // namespace nordkeep
