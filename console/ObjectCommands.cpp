#include "console/ObjectCommands.h"

namespace nordkeep {
namespace {

constexpr TextView kResetByOperator = "reset by operator";

}  // namespace

void ObjectCommands::SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) {
    if (needs_.server) return needs_.server->RequestServiceMode(set, object, period);
    needs_.periods.Set(set, object, period);
}

void ObjectCommands::ResetAliveTests(cTranslate& set, cIDCode& object) {
    if (needs_.server) return needs_.server->RequestAliveTestReset(set, object);
    const OleDate now = needs_.clock.Now();
    for (const int test : {1, 2}) {
        if (object.AliveTestIsToBeUsed(test)) needs_.timers.Restart(object, test, now, kResetByOperator);
        object.FailedFlag(test) = false;
    }
    needs_.views.UpdateObjectTreeEntry(set, object);
    needs_.views.RecalcAliveTestView();
    needs_.replica.SendAliveTestReset(set, object);
}

}  // namespace nordkeep
