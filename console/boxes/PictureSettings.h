#pragma once

#include "runtime/SettingTable.h"

namespace nordkeep {

/// Maps and alarm pictures of this workstation. Times are ms for each picture; below 1 a picture stays.
struct PictureSettings {
    int DefaultZoom = 100;  // percent
    Text AlarmPictures{};   // files, separated by commas
    Text SpeechPictures{};
    int AlarmPictureTime = -1;
    int SpeechPictureTime = -1;
};

std::span<const SettingRow<PictureSettings>> PictureSettingRows();

}  // namespace nordkeep
