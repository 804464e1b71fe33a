#pragma once

#include "platform/Files.h"

namespace nordkeep {

/// What a sound device does, with the numbers that media controls use.
enum class SoundMode { NotReady = 524, Stopped = 525, Playing = 526 };

/// Plays one sound file at a time, beside the program.
class SoundDevice {
 public:
    virtual ~SoundDevice() = default;
    /// The system's name of the output to play on; empty for its default.
    virtual void SetOutput(const Text& name) = 0;
    /// Plays the file from its beginning, in place of what was playing. False when that cannot even start.
    virtual bool Play(const NativePath& file) = 0;
    virtual void Stop() = 0;
    /// NotReady when the last file could not be played, or not to its end.
    virtual SoundMode Mode() = 0;
};

}  // namespace nordkeep
