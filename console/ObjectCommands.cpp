#include "console/ObjectCommands.h"

namespace nordkeep {

void ObjectCommands::SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) {
    if (needs_.server) return needs_.server->RequestServiceMode(set, object, period);
    needs_.periods.Set(set, object, period);
}

void ObjectCommands::ResetAliveTests(cTranslate& set, cIDCode& object) {
    if (needs_.server) return needs_.server->RequestAliveTestReset(set, object);
    needs_.resets.Reset(set, object, needs_.clock.Now());
}

}  // namespace nordkeep
