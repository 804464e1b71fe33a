#pragma once

#include "platform/Clock.h"
#include "translation/AliveTestTimers.h"
#include "translation/ObjectReplica.h"
#include "translation/ServicePeriods.h"
#include "translation/SilenceAlarm.h"
#include "translation/TelegramExport.h"
#include "translation/Translations.h"

#include <cstdint>

namespace nordkeep {

/// Looks once a minute for objects that have fallen silent and for service periods that are over.
///
/// One scan goes through the sets in order and their objects in file order: first the service period, then
/// test 1, then test 2. It is done in slices, so that a centre whose objects all fail at once still receives;
/// a scan that a reload interrupts starts over.
class AliveScan {
 public:
    struct Needs {
        Translations& translations;
        ServicePeriods& periods;
        SilenceAlarm& alarm;
        TelegramExport& telegramExport;
        ObjectViews& views;
        ObjectReplica& replica;
        const Clock& clock;
        const TranslationSettings& settings;
        const AliveTestTimers& timers;
    };
    explicit AliveScan(const Needs& needs) : needs_(needs) {}

    /// Counts the time of a tick, goes on with a running scan, or begins one with the tick's time as the time
    /// of the whole scan. True when a new round has begun.
    bool Tick(int elapsedMs, OleDate now);
    /// Goes on with a running scan; may be called as often as the loop has time.
    void Continue();
    bool IsRunning() const { return isRunning_; }

 private:
    void Begin(OleDate now);
    void StartOver();
    bool HasBeenReloaded() const;
    void ScanNext();
    void ScanObject(cTranslate& set, cIDCode& object);
    void ScanTest(cTranslate& set, cIDCode& object, int test);
    void Fail(cTranslate& set, cIDCode& object, int test);
    void LogChange(TextView verb, const cIDCode& object, int test, TextView preposition) const;

    Needs needs_;
    int elapsedMs_ = 0;
    bool isRunning_ = false;
    bool isInSlice_ = false;
    bool hasFailures_ = false;
    OleDate now_{};
    std::uint64_t generation_ = 0;
    std::size_t nextSet_ = 0;
    std::size_t nextObject_ = 0;
};

}  // namespace nordkeep
