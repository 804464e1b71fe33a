#include "console/AboutText.h"

namespace nordkeep {
namespace {

int ModeWord(Role role) {
    if (role == Role::Client) return 3504;
    return role == Role::Server ? 3503 : 3502;
}

}  // namespace

AboutText MakeAboutText(const Captions& captions, TextView version, TextView dataFolder, Role role) {
    return {.title = captions(3740),
            .description = captions(3742),
            .lines = {captions(3741, {version}), captions(3744) + ": " + captions(ModeWord(role)),
                      captions(3743) + ": " + Text(dataFolder)}};
}

}  // namespace nordkeep
