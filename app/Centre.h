#pragma once

#include "app/Duties.h"
#include "app/EngineSettings.h"
#include "app/Foundation.h"
#include "console/AlarmLists.h"
#include "console/ViewState.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/Intake.h"
#include "pipeline/ParkedEvents.h"
#include "ports/FieldMap.h"
#include "ports/PortList.h"
#include "translation/AliveScan.h"
#include "translation/ReloadWatch.h"

namespace nordkeep {

/// All settings that are read at start, each subsystem's in its own struct.
struct CentreSettings {
    explicit CentreSettings(const Settings& files);

    EngineSettings engine;
    StoreSettings store;
    TranslationSettings translation;
    IntakeSettings intake;
    ResetSettings resets;
    DispatchSettings dispatch;
    DeskSettings desk;
    TorvexSettings torvex;
    OutputSettings outputs;
    ComCallSettings comCall;
    ViewState view;
};

/// The running program: owns everything and knows all classes. The members stand in building order, and each
/// gets only what stands above it: what is told comes first, what tells comes last.
class Centre {
 public:
    explicit Centre(Foundation& foundation);

    /// Opens the ports, brings the stored events back and starts the timers.
    void Start();
    /// A clean stop: nothing comes in any more, what has to survive is saved, and the program ends on the
    /// next tick of the open timer.
    void CloseAndShutdownEverything();

 private:
    struct Step {
        const char* name;
        void (Centre::*run)();
    };
    static const Step kStartSteps[];
    static const Step kStopSteps[];

    void DecideOnPorts();
    void WriteStartLines();
    void MakePorts();
    void LoadTranslations();
    void OpenPorts();
    void LoadStoredEvents();
    void StartTimers();
    void TellReady();

    void TellStopping();
    void StopTimers();
    void FinishFormats();
    void SettleReplies();
    void ClosePorts();
    void DispatchParked();
    void CloseOutputs();
    void SaveLastEvents();
    void SaveView();

    void RaiseStorageAlarm(const Text& reason);
    bool IsClient() const { return foundation_.CopyRole() == Role::Client; }

    Foundation& foundation_;
    CentreSettings settings_;
    StallWatch stalls_;
    ServiceStatus status_;
    EventCommit commit_;
    NoReplica alarmReplica_{};
    NoObjectReplica objectReplica_{};
    NoObjectViews objectViews_{};
    ExportQueues exports_{};
    FieldMap fieldMap_;
    AlarmLists lists_{};
    QuietDesk desk_{};
    LookupRules lookup_;
    AliveTestTimers timers_;
    EventStore store_;
    Translations translations_;
    ServicePeriods servicePeriods_;
    TorvexLink torvex_;
    AlarmOutputs outputs_;
    Resets resets_;
    Dispatcher dispatcher_;
    ParkedEvents parked_;
    Intake intake_;
    AliveScan aliveScan_;
    ReloadWatch reloadWatch_;
    PortParts portParts_;
    PortList ports_{};
    PortConditions conditions_{};
    Duties duties_;
};

}  // namespace nordkeep
