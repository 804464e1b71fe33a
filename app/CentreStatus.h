#pragma once

#include "app/CentreConditions.h"
#include "console/lists/AlarmLists.h"
#include "console/lists/Captions.h"
#include "network/ClientSlots.h"
#include "runtime/StallWatch.h"
#include "status/MqttFeed.h"
#include "status/StatusService.h"

namespace nordkeep {

/// What the running centre has to tell the status service.
class CentreStatus final : public StatusSource {
 public:
    struct Needs {
        const Language& language;
        const Clock& clock;
        Role role = Role::StandAlone;
        const CentreConditions& conditions;
        const PortList& ports;
        const EventStore& store;
        const EventCommit& commit;
        const AlarmLists& lists;
        const StallWatch& stalls;
        const ClientSlots* clients;  // none on any copy but a server
    };
    explicit CentreStatus(const Needs& needs) : needs_(needs), captions_(needs.language) {}
    StatusFacts Facts() const override;

 private:
    void AddLines(StatusFacts& facts) const;
    void AddConditions(StatusFacts& facts) const;
    void AddReasons(StatusFacts& facts) const;

    Needs needs_;
    Captions captions_;
};

}  // namespace nordkeep
