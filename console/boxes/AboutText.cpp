#include "console/boxes/AboutText.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3740;
constexpr int kCaptionVersion = 3741;
constexpr int kCaptionDescription = 3742;
constexpr int kCaptionDataFolder = 3743;
constexpr int kCaptionMode = 3744;
int ModeWord(Role role) {
    if (role == Role::Client) return 3504;
    return role == Role::Server ? 3503 : 3502;
}

}  // namespace

AboutText MakeAboutText(const Captions& captions, TextView version, TextView dataFolder, Role role) {
    return {.title = captions(kCaptionTitle),
            .description = captions(kCaptionDescription),
            .lines = {captions(kCaptionVersion, {version}),
                      captions(kCaptionMode) + ": " + captions(ModeWord(role)),
                      captions(kCaptionDataFolder) + ": " + Text(dataFolder)}};
}

}  // namespace nordkeep
