#include "pipeline/outputs/SoundPlayer.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextCannotPlay = 3517;
constexpr int kShortestBackOffMs = 1000;
constexpr int kLongestBackOffMs = 60'000;

}  // namespace

SoundPlayer::SoundPlayer(const Needs& needs, AlarmSound sound) : needs_(needs), sound_(std::move(sound)) {
    needs_.device.SetOutput(sound_.device);
}

void SoundPlayer::UseSound(AlarmSound sound) {
    sound_ = std::move(sound);
    needs_.device.SetOutput(sound_.device);
}

void SoundPlayer::Request(SoundRequest request, long priority) {
    // Started over at each alarm of a burst, the operator would hear nothing but its first moments.
    if (state_ == State::RepeatRequested || state_ == State::Repeating) {
        if (priority >= 1 && (priority_ < 1 || priority < priority_)) priority_ = priority;
        return;
    }
    priority_ = priority;
    state_ = request == SoundRequest::Repeat ? State::RepeatRequested : State::OnceRequested;
}

void SoundPlayer::Silence() {
    needs_.device.Stop();
    state_ = State::Idle;
}

void SoundPlayer::Tick(int intervalMs) {
    switch (state_) {
        case State::Idle:
            return;
        case State::RepeatRequested:
            state_ = State::Repeating;
            backOffMs_ = waitLeftMs_ = 0;
            return Play();
        case State::OnceRequested:
            state_ = State::PlayingOnce;
            return Play();
        case State::Repeating:
            return WatchRepeating(intervalMs, needs_.device.Mode());
        case State::PlayingOnce:
            return WatchOnce(needs_.device.Mode());
    }
}

const Text& SoundPlayer::File() const {
    if (priority_ < 1) return sound_.file;
    const Text& file = sound_.ofPriority[static_cast<std::size_t>(std::min(priority_, 3L) - 1)];
    return file.empty() ? sound_.file : file;
}

void SoundPlayer::Play() {
    needs_.device.Play(needs_.dataFolder.ResolveSetting(File()));
}

void SoundPlayer::WatchOnce(SoundMode mode) {
    if (mode == SoundMode::Playing) return;
    NoteEnd(mode);
    state_ = State::Idle;
}

void SoundPlayer::WatchRepeating(int intervalMs, SoundMode mode) {
    if (mode == SoundMode::Playing) return;
    if (waitLeftMs_ > 0) {
        waitLeftMs_ -= intervalMs;
        if (waitLeftMs_ <= 0) Play();
        return;
    }
    NoteEnd(mode);
    if (mode == SoundMode::Stopped) {
        backOffMs_ = 0;
        return Play();
    }
    // A device that is away fails at once; it is asked again, but not ten times a second.
    waitLeftMs_ = backOffMs_ = std::clamp(backOffMs_ * 2, kShortestBackOffMs, kLongestBackOffMs);
}

void SoundPlayer::NoteEnd(SoundMode mode) {
    const bool hasFailed = mode == SoundMode::NotReady;
    if (hasFailed && !isFailureLogged_) {
        needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextCannotPlay) + File(), LogKind::Failure);
    }
    isFailureLogged_ = hasFailed;
}

}  // namespace nordkeep
