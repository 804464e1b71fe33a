#include "translation/AliveScan.h"

#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kRoundMs = 60000;
constexpr int kFastRoundMs = 1000;
// A slice ends with the object during which this time is over.
constexpr std::int64_t kSliceMs = 20;

}  // namespace

bool AliveScan::Tick(int elapsedMs, OleDate now) {
    elapsedMs_ += elapsedMs;
    const int round = needs_.timers.Pace() == AliveTestPace::Seconds ? kFastRoundMs : kRoundMs;
    const bool isDue = elapsedMs_ >= round;
    if (isDue) elapsedMs_ = 0;
    if (isDue && !isRunning_) Begin(now);
    Continue();
    return isDue;
}

void AliveScan::Begin(OleDate now) {
    isRunning_ = true;
    now_ = now;
    StartOver();
}

void AliveScan::StartOver() {
    generation_ = needs_.translations.Generation();
    nextSet_ = 0;
    nextObject_ = 0;
}

bool AliveScan::HasBeenReloaded() const {
    return generation_ != needs_.translations.Generation();
}

void AliveScan::Continue() {
    if (!isRunning_ || isInSlice_) return;
    isInSlice_ = true;
    hasFailures_ = false;
    if (HasBeenReloaded()) StartOver();
    const std::int64_t end = needs_.clock.MonotonicMs() + kSliceMs;
    while (isRunning_ && !HasBeenReloaded()) {
        ScanNext();
        if (needs_.clock.MonotonicMs() >= end) break;
    }
    if (hasFailures_) needs_.views.RecalcAliveTestView();
    isInSlice_ = false;
}

void AliveScan::ScanNext() {
    const auto& sets = needs_.translations.Sets();
    if (nextSet_ >= sets.size()) {
        isRunning_ = false;
        return;
    }
    cTranslate& set = *sets[nextSet_];
    if (nextObject_ < set.m_IdCodes.size()) {
        ScanObject(set, *set.m_IdCodes[nextObject_++]);
    } else {
        ++nextSet_;
        nextObject_ = 0;
    }
}

void AliveScan::ScanObject(cTranslate& set, cIDCode& object) {
    needs_.periods.EndWhenOver(set, object, now_);
    for (const int test : {1, 2}) {
        if (!HasBeenReloaded()) ScanTest(set, object, test);
    }
}

void AliveScan::ScanTest(cTranslate& set, cIDCode& object, int test) {
    if (!object.AliveTestHasExpired(test, now_) || !object.AliveTestIsToBeUsed(test)) return;
    if (needs_.settings.BehaviourOf(test) == kOneAlarmForEachFailure && object.FailedFlag(test)) return;
    needs_.alarm.RaiseSilenceAlarm(set, object, test, now_);
    if (!HasBeenReloaded()) Fail(set, object, test);
}

void AliveScan::Fail(cTranslate& set, cIDCode& object, int test) {
    if (test == 1 && !object.m_RBM600ExportProtocol.empty()) {
        needs_.telegramExport.ExportTelegram(object.m_RBM600ExportAlarmCode, object.m_RBM600ExportProtocol);
    }
    object.FailedFlag(test) = true;
    hasFailures_ = true;
    LogChange("Changing ", object, test, "' from ");
    object.CalculateNextAliveTestTime(test, now_, needs_.timers.Pace());
    LogChange("Changed ", object, test, "' to ");
    needs_.views.UpdateObjectTreeEntry(set, object);
    needs_.replica.SendObjectUpdate(set, object);
}

void AliveScan::LogChange(TextView verb, const cIDCode& object, int test, TextView preposition) const {
    if (!needs_.settings.AliveTestDebug) return;
    Text line(verb);
    line.append(AliveTestName(test)).append(" '").append(object.m_IdCode).append(preposition);
    needs_.timers.LogDebug(line + GeneralDate(object.GetNextAliveTestExpirationTime(test)));
}

}  // namespace nordkeep
