#pragma once

#include "runtime/SysLog.h"
#include "translation/Translate.h"
#include "translation/TranslationSettings.h"

namespace nordkeep {

/// Restarts alive tests at the pace of this copy, and tells of it in the system log with AliveTestDebug.
class AliveTestTimers {
 public:
    AliveTestTimers(const TranslationSettings& settings, AliveTestPace pace, SysLog& log)
        : settings_(settings), pace_(pace), log_(log) {}

    AliveTestPace Pace() const { return pace_; }
    /// Reschedules a test after a sign of life at `heard`. `cause` completes "AliveTest was ..." in the log.
    void Restart(cIDCode& object, int test, OleDate heard, TextView cause) const;
    /// Starts both tests anew at `now`; their failed states go. Writes nothing.
    void StartAnew(cIDCode& object, OleDate now) const;
    /// "<AliveTest or AliveTest2> was <cause> '<ID code>' to <expiration>".
    void LogExpiration(const cIDCode& object, int test, TextView cause) const;
    /// Writes a line when AliveTestDebug is on.
    void LogDebug(TextView text) const;

 private:
    const TranslationSettings& settings_;
    AliveTestPace pace_;
    SysLog& log_;
};

/// The cause that the intake gives to Restart.
inline constexpr TextView kChangedByIncomingEvent = "changed by incoming event";

/// The name of a test in the log.
TextView AliveTestName(int test);

}  // namespace nordkeep
