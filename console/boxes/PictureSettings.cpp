#include "console/boxes/PictureSettings.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kOwn = SettingScope::Workstation;
using Row = SettingRow<PictureSettings>;

constexpr Row kRows[] = {
    {kGeneral, "DefaultZoom", "100", kOwn, &PictureSettings::DefaultZoom},
    {kGeneral, "AlarmPictures", "", kOwn, &PictureSettings::AlarmPictures},
    {kGeneral, "SpeechPictures", "", kOwn, &PictureSettings::SpeechPictures},
    {kGeneral, "AlarmPictureTime", "-1", kOwn, &PictureSettings::AlarmPictureTime},
    {kGeneral, "SpeechPictureTime", "-1", kOwn, &PictureSettings::SpeechPictureTime},
};

}  // namespace

std::span<const SettingRow<PictureSettings>> PictureSettingRows() {
    return kRows;
}

}  // namespace nordkeep
