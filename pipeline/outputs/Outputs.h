#pragma once

#include "store/Alarm.h"

namespace nordkeep {

/// How the sound of an alarm is played.
enum class SoundRequest { Repeat, Once };

/// The outputs that work on behind a dispatched alarm: other lines, the message queue, sound, relay, printer.
/// None of them makes the caller wait.
class Outputs {
 public:
    virtual ~Outputs() = default;
    virtual void SendToComCall(const cAlarm& alarm) = 0;
    virtual void SendToMessageQueue(const cAlarm& alarm) = 0;
    /// Plays the sound file of a priority, below 1 that of all; a sound that is repeating goes on instead of
    /// a request to play once, and becomes that of a more urgent alarm.
    virtual void PlaySound(SoundRequest request, long priority) = 0;
    virtual void RequestRelay() = 0;
    virtual void PrintAlarm(const cAlarm& alarm) = 0;
};

/// For a copy without these outputs.
class QuietOutputs final : public Outputs {
 public:
    void SendToComCall(const cAlarm&) override {}
    void SendToMessageQueue(const cAlarm&) override {}
    void PlaySound(SoundRequest, long) override {}
    void RequestRelay() override {}
    void PrintAlarm(const cAlarm&) override {}
};

}  // namespace nordkeep
