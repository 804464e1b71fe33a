#pragma once

#include "pipeline/AlarmHandling.h"
#include "pipeline/Intake.h"
#include "translation/AliveScan.h"
#include "translation/ReloadWatch.h"

#include <functional>

namespace nordkeep {

/// The settings of the core, each subsystem's in its own struct.
struct CoreSettings {
    StoreSettings store{};
    TranslationSettings translation{};
    IntakeSettings intake{};
    ResetSettings resets{};
    DispatchSettings dispatch{};
    DeskSettings desk{};
    TorvexSettings torvex{};
};
CoreSettings LoadCoreSettings(const Settings& files);

/// What the core is built on; all of it outlives the core.
struct CoreParts {
    const FileTree& dataFolder;
    Settings& files;
    const Language& language;
    const Clock& clock;
    SysLog& log;
    DurableWrites& disk;
    Journal* journal = nullptr;           // none on a copy that keeps none
    std::function<void()> requestCommit;  // arranges for commit.Commit() at the end of the turn
    AlarmReplica& alarmReplica;
    ObjectReplica& objectReplica;
    AlarmViews& alarmViews;
    ObjectViews& objectViews;
    OperatorDesk& desk;
    Outputs& outputs;
    TorvexLink& torvex;
    TelegramExport& telegramExport;
    XmlFieldMap* fieldMap = nullptr;  // none on a copy without gateways
    Role role = Role::StandAlone;
    AliveTestPace pace = AliveTestPace::Minutes;
    std::uint64_t randomSeed = 0;
};

/// From an event that has been decoded to its record, its file and what is done to it: the part of the
/// program that is the same on every copy and in every test, without lines, network, windows and timers. The
/// members stand in building order.
struct Core : private StorageAlarm {
    Core(const CoreParts& parts, const CoreSettings& settings);
    Core(const Core&) = delete;
    Core& operator=(const Core&) = delete;

    /// At the start, behind the translations: the stored events, and what a crash or power cut has left
    /// undone.
    void BringBack();
    /// The last thing of a clean stop, when nothing is promised any more: everything is on the medium, and
    /// the next start has nothing to play.
    void StopCleanly();

    EventCommit commit;
    LookupRules lookup;
    AliveTestTimers timers;
    EventStore store;
    Translations translations;
    Deeds deeds;
    ServicePeriods servicePeriods;
    AlarmHandling handling;
    Resets resets;
    Dispatcher dispatcher;
    ParkedEvents parked;
    Intake intake;
    AliveScan aliveScan;
    ReloadWatch reloadWatch;

 private:
    /// Operators see it although it cannot be stored either.
    void RaiseStorageAlarm(const Text& text) override;

    const Clock& clock_;
    const FileTree& dataFolder_;
    DurableWrites& disk_;
};

}  // namespace nordkeep
