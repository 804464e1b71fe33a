#include "console/boxes/PictureSettings.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kOwn = SettingScope::Workstation;
using Row = SettingRow<PictureSettings>;

constexpr Row kRows[] = {
    {kGeneral, "DefaultZoom", kOwn, &PictureSettings::DefaultZoom},
    {kGeneral, "AlarmPictures", kOwn, &PictureSettings::AlarmPictures},
    {kGeneral, "SpeechPictures", kOwn, &PictureSettings::SpeechPictures},
    kAlarmPictureTimeRow<PictureSettings>,
    kSpeechPictureTimeRow<PictureSettings>,
};

}  // namespace

std::span<const SettingRow<PictureSettings>> PictureSettingRows() {
    return kRows;
}

}  // namespace nordkeep
