#pragma once

#include "pipeline/EventIntake.h"
#include "pipeline/EventPort.h"
#include "platform/Clock.h"
#include "runtime/Protocol.h"
#include "runtime/SettingTable.h"

namespace nordkeep {

/// The test telegrams that prove a port alive.
struct SupervisionSettings {
    int TestTelegramInterval = -1;  // seconds of silence allowed; 0 and less is off
    Text TestTelegramAlarmCode{};
    Text TestTelegramRestoreCode{};
};

std::span<const SettingRow<SupervisionSettings>> SupervisionSettingRows();
/// The codes default to the keys of the same name of the whole centre.
SupervisionSettings LoadSupervisionSettings(const Settings& files, const Text& portName,
                                            MessageFormat format);

/// Raises one event when nothing has proved for too long that a port works, and one when something does
/// again.
class TestTelegrams {
 public:
    TestTelegrams(SupervisionSettings settings, EventIntake& intake, const Clock& clock,
                  const EventPort& port);

    void NoteProof();
    void Supervise();
    /// A fault is near, and whoever can should ask for a proof.
    bool IsProofDue() const;
    /// Nothing has proved for too long that the port works.
    bool IsMissing() const { return isMissing_; }

 private:
    std::int64_t SilentMs() const { return clock_.MonotonicMs() - lastProofMs_; }
    std::int64_t AllowedMs() const { return settings_.TestTelegramInterval * 1000LL; }
    bool IsWatching() const { return settings_.TestTelegramInterval > 0 && !isMissing_; }
    void Raise(const Text& code);

    SupervisionSettings settings_;
    EventIntake& intake_;
    const Clock& clock_;
    const EventPort& port_;
    std::int64_t lastProofMs_;
    bool isMissing_ = false;
};

}  // namespace nordkeep
