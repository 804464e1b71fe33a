#pragma once

#include "pipeline/EventIntake.h"
#include "ports/HeldTelegrams.h"
#include "ports/PortTally.h"
#include "ports/TestTelegrams.h"
#include "ports/collectors/Collector.h"
#include "store/EventCommit.h"

#include <map>
#include <string>

namespace nordkeep {

/// What has come through a port since the start.
struct PortTotals {
    std::uint64_t telegrams = 0;
    std::uint64_t events = 0;                        // of these
    std::map<std::string, std::uint64_t> refused{};  // by reason
};

/// The door through which everything that a port finds goes: proofs of life to the supervision, notes to the
/// log, events to the intake, and back to the finder whether they are stored.
class PortSteps final : public StepTaker {
 public:
    struct Parts {
        const Language& language;
        TrafficLog& trafficLog;
        EventIntake& intake;
        EventCommit& commit;
        PortLog& log;
        const EventPort& port;
        TestTelegrams& tests;
        PortTally& tally;
    };

    explicit PortSteps(const Parts& parts) : parts_(parts), held_(parts.commit, parts.port.PortName) {}

    void TakeStep(TelegramStep step, WhenStored whenStored) override;
    void NoteTraffic(TextView bytes, TrafficDirection direction) override;
    bool IsMuted() const override { return isMuted_; }
    bool IsProofDue() const override { return parts_.tests.IsProofDue(); }

    /// Behind a crash: `step` is what the format makes of a telegram that was held back then.
    void TakeUp(const KeptTelegram& kept, TelegramStep step);

    void SetMuted(bool isMuted) { isMuted_ = isMuted; }
    const PortTotals& Totals() const { return totals_; }

 private:
    Text LabelOf(const DecodedEvent& decoded) const;
    void TakeEvents(std::vector<DecodedEvent>& events);

    Parts parts_;
    HeldTelegrams held_;
    bool isMuted_ = false;
    PortTotals totals_{};
};

}  // namespace nordkeep
