#include "console/boxes/AboutText.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 3740;
constexpr int kCaptionVersion = 3741;
constexpr int kCaptionDescription = 3742;
constexpr int kCaptionDataFolder = 3743;
constexpr int kCaptionMode = 3744;
constexpr int kTextStandAlone = 3502;
constexpr int kTextServer = 3503;
constexpr int kTextClient = 3504;

}  // namespace

int ModeText(Role role) {
    if (role == Role::Client) return kTextClient;
    return role == Role::Server ? kTextServer : kTextStandAlone;
}

AboutText MakeAboutText(const Captions& captions, TextView version, TextView dataFolder, Role role) {
    return {.title = captions(kCaptionTitle),
            .description = captions(kCaptionDescription),
            .lines = {captions(kCaptionVersion, {version}),
                      captions(kCaptionMode) + ": " + captions(ModeText(role)),
                      captions(kCaptionDataFolder) + ": " + Text(dataFolder)}};
}

}  // namespace nordkeep
