#pragma once

#include "pipeline/outputs/Outputs.h"
#include "platform/FileTree.h"
#include "platform/SoundDevice.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

#include <array>

namespace nordkeep {

/// Which sound is played, and on what.
struct AlarmSound {
    Text file{};                       // a path below the data folder, or an absolute one
    Text device{};                     // the system's name of the output; empty for its default
    std::array<Text, 3> ofPriority{};  // of 1, 2, and 3 and lower; empty: the file of all
};

/// The alarm sound: an alarm requests it, and the ticks of the system timer start it, keep it going and watch
/// its end. A sound that cannot be played costs one line in the log until it can again.
class SoundPlayer {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Language& language;
        SysLog& log;
        SoundDevice& device;
    };
    SoundPlayer(const Needs& needs, AlarmSound sound);

    /// Another sound from the next start on.
    void UseSound(AlarmSound sound);
    /// A sound that is repeating goes on as it is.
    void Request(SoundRequest request, long priority = 0);
    /// The operator has heard it.
    void Silence();
    bool IsSounding() const { return state_ != State::Idle; }
    /// The last sound could not be played.
    bool HasFailed() const { return isFailureLogged_; }
    void Tick(int intervalMs);

 private:
    enum class State { Idle = 0, RepeatRequested = 1, Repeating = 2, OnceRequested = 3, PlayingOnce = 4 };

    const Text& File() const;
    void Play();
    void WatchOnce(SoundMode mode);
    void WatchRepeating(int intervalMs, SoundMode mode);
    void NoteEnd(SoundMode mode);

    Needs needs_;
    AlarmSound sound_;
    State state_ = State::Idle;
    long priority_ = 0;  // of what sounds; 0: none
    bool isFailureLogged_ = false;
    int backOffMs_ = 0;   // the next wait of a sound that fails
    int waitLeftMs_ = 0;  // until it is tried again
};

}  // namespace nordkeep
