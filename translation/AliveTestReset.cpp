#include "translation/AliveTestReset.h"

namespace nordkeep {
namespace {

constexpr TextView kResetByClient = "reset by client";

}  // namespace

void AliveTestReset::Reset(cTranslate& set, cIDCode& object, OleDate now) const {
    needs_.timers.StartAnew(object, now);
    for (const int test : {1, 2}) needs_.timers.LogExpiration(object, test, kResetByClient);
    needs_.views.UpdateObjectTreeEntry(set, object);
    needs_.views.RecalcAliveTestView();
    needs_.replica.SendAliveTestReset(set, object);
}

}  // namespace nordkeep
