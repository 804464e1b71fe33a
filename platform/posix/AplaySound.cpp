#include "platform/posix/AplaySound.h"

namespace nordkeep {

bool AplaySound::Play(const NativePath& file) {
    std::vector<std::string> arguments = {"-q"};
    if (!output_.empty()) arguments.insert(arguments.end(), {"-D", ToUtf8(output_)});
    arguments.push_back(file);
    hasStopped_ = false;
    return player_.Start("aplay", arguments);
}

void AplaySound::Stop() {
    player_.Stop();
    hasStopped_ = true;
}

SoundMode AplaySound::Mode() {
    if (player_.IsRunning()) return SoundMode::Playing;
    return hasStopped_ || player_.HasSucceeded() ? SoundMode::Stopped : SoundMode::NotReady;
}

}  // namespace nordkeep
