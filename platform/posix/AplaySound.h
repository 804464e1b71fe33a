#pragma once

#include "platform/ChildProcess.h"
#include "platform/SoundDevice.h"

namespace nordkeep {

/// Plays sound files with the system's own player program.
class AplaySound final : public SoundDevice {
 public:
    void SetOutput(const Text& name) override { output_ = name; }
    bool Play(const NativePath& file) override;
    void Stop() override;
    SoundMode Mode() override;

 private:
    Text output_{};
    bool hasStopped_ = true;  // by Stop, or never played
    ChildProcess player_{};
};

}  // namespace nordkeep
