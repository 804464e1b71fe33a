#pragma once

#include "runtime/SharedSettings.h"

namespace nordkeep {

/// Maps and alarm pictures of this workstation. Times are ms for each picture; below 1 a picture stays.
struct PictureSettings : PictureTimeSettings {
    int DefaultZoom = 100;  // percent
    Text AlarmPictures{};   // files, separated by commas
    Text SpeechPictures{};
};

std::span<const SettingRow<PictureSettings>> PictureSettingRows();

}  // namespace nordkeep
