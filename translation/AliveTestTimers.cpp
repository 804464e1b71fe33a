#include "translation/AliveTestTimers.h"

#include "runtime/Dates.h"

namespace nordkeep {

TextView AliveTestName(int test) {
    return test == 1 ? "AliveTest" : "AliveTest2";
}

void AliveTestTimers::Restart(cIDCode& object, int test, OleDate heard, TextView cause) const {
    object.CalculateNextAliveTestTime(test, heard, pace_);
    LogExpiration(object, test, cause);
}

void AliveTestTimers::StartAnew(cIDCode& object, OleDate now) const {
    for (const int test : {1, 2}) {
        object.CalculateNextAliveTestTime(test, now, pace_);
        object.FailedFlag(test) = false;
    }
}

void AliveTestTimers::LogExpiration(const cIDCode& object, int test, TextView cause) const {
    if (!settings_.AliveTestDebug) return;
    Text line(AliveTestName(test));
    line.append(" was ").append(cause).append(" '").append(object.m_IdCode).append("' to ");
    LogDebug(line + GeneralDate(object.GetNextAliveTestExpirationTime(test)));
}

void AliveTestTimers::LogDebug(TextView text) const {
    if (settings_.AliveTestDebug) log_.WriteSysLog(text, LogKind::Information);
}

}  // namespace nordkeep
