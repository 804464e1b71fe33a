#pragma once

#include "app/RunningCheck.h"
#include "app/settings/EngineSettings.h"
#include "console/print/SpooledOutput.h"
#include "network/ServerLink.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/TorvexLink.h"
#include "ports/PortConditions.h"
#include "ports/PortList.h"
#include "runtime/CentreState.h"
#include "status/MqttFeed.h"
#include "store/EventStore.h"
#include "translation/Translations.h"

namespace nordkeep {

/// What is wrong with this copy, and what has to be known of it: looked for once a second, for its window and
/// for the clients of a server.
class CentreConditions {
 public:
    struct Needs {
        const Clock& clock;
        const EngineSettings& settings;
        const ServerLink* server;  // of a client; none on any other copy
        const PortConditions& ports;
        const RunningCheck& check;
        const TorvexLink& torvex;
        const AlarmOutputs& outputs;
        const SpooledOutput& paper;
        const MqttFeed& mqtt;      // built behind this, too
        const PortList& portList;  // built behind this; nothing is asked of it before Renew
        const EventStore& store;
        const EventCommit& commit;
        const Translations& translations;
    };
    explicit CentreConditions(const Needs& needs);

    void Renew();
    const std::vector<LineFigures>& Lines() const { return lines_; }
    const std::vector<ConditionFact>& Facts() const { return facts_; }
    /// The ways out of this copy that are configured, and whether each reaches its peer.
    std::vector<OutputState> Outputs() const;
    /// Those that concern the whole centre, and not only who sits here.
    std::vector<ConditionFact> FactsForClients() const;

 private:
    using FactList = std::vector<ConditionFact>;

    void AddLines(FactList& facts) const;
    void AddStorage(FactList& facts) const;
    void AddOutputs(FactList& facts) const;
    void AddPlace(FactList& facts) const;
    std::int64_t ClockOffsetMs() const { return needs_.clock.UtcMs() - needs_.clock.MonotonicMs(); }
    void WatchClock();
    void CountService();
    void NoteInService(const cIDCode& object, OleDate now);
    bool HasFailedForLong(const LineFigures& line) const;

    Needs needs_;
    std::vector<LineFigures> lines_{};
    FactList facts_{};
    std::int64_t clockOffsetMs_;  // of the wall clock to the one that nobody sets
    std::int64_t jumpMs_ = 0;
    std::int64_t jumpedAtMs_ = 0;  // monotonic
    OleDate jumpedAt_{};
    int inService_ = 0;
    int endingSoon_ = 0;
    OleDate firstEnd_{};
    Text firstToEnd_{};
    int roundsToCount_ = 0;
};

}  // namespace nordkeep
