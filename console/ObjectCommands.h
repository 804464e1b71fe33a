#pragma once

#include "network/ClientReplica.h"
#include "platform/Clock.h"
#include "translation/AliveTestReset.h"
#include "translation/ServicePeriods.h"

namespace nordkeep {

/// What operators do with objects. A client asks its server, whose answer changes the mirror; every other
/// copy does it itself.
class ObjectCommands {
 public:
    struct Needs {
        ServicePeriods& periods;
        const AliveTestReset& resets;
        const Clock& clock;
        ClientReplica* server = nullptr;  // only on a client
    };
    explicit ObjectCommands(const Needs& needs) : needs_(needs) {}

    void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period);
    /// Both alive tests start again from now, and count as not failed.
    void ResetAliveTests(cTranslate& set, cIDCode& object);

 private:
    Needs needs_;
};

}  // namespace nordkeep
