#pragma once

#include "app/CentreConditions.h"
#include "app/CentreStatus.h"
#include "app/Duties.h"
#include "app/Foundation.h"
#include "app/NetworkPeers.h"
#include "app/OperatorPorts.h"
#include "app/RunningCheck.h"
#include "app/Workplace.h"
#include "app/settings/CentreSettings.h"
#include "console/boxes/SimulationBox.h"
#include "console/lists/AlarmLists.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/Core.h"
#include "ports/FieldMap.h"
#include "ports/PortList.h"
#include "reports/HistoryWork.h"

namespace nordkeep {

/// The running program: owns everything and knows all classes. The members stand in building order, and each
/// gets only what stands above it: what is told comes first, what tells comes last.
class Centre : private ProgramEnd, private PortRenewal {
 public:
    explicit Centre(Foundation& foundation);

    /// What a person is asked before anything begins.
    void AskBeforeStart() { DecideOnPorts(); }
    /// Opens the ports, brings the stored events back and starts the timers.
    void Start();
    /// A clean stop: nothing comes in any more, what has to survive is saved, and the program ends on the
    /// next tick of the open timer.
    void CloseAndShutdownEverything();

    /// The operator's place, for its views.
    Workplace& Place() { return workplace_; }
    SimulationBox& Simulation() { return simulation_; }
    const FindingsSource& Check() const { return check_; }

 private:
    struct Step {
        const char* name;
        void (Centre::*run)();
    };
    static const Step kStartSteps[];
    static const Step kStopSteps[];

    void DecideOnPorts();
    void WriteStartLines();
    void OpenJournal();
    void MakePorts();
    void LoadTranslations();
    void OpenPorts();
    void LoadStoredEvents();
    void BringInState();
    void StartTimers();
    void BeginCheck();
    void OpenStatusService();
    void TellReady();

    void TellStopping();
    void StopTimers();
    void FinishDeeds();
    void FinishFormats();
    void SettleReplies();
    void ClosePorts();
    void DispatchParked();
    void CloseOutputs();
    void ClosePaper();
    void SaveLastEvents();
    void CloseStatusService();
    void CloseMqtt();
    void CloseWindows();
    void SaveView();
    void CloseNetwork();
    void RemoveScratchFiles();
    void CloseJournal();

    /// Ports ask whether the store still has events to write.
    class StoredByStore final : public StoredEvents {
     public:
        explicit StoredByStore(const EventStore& store) : store_(store) {}
        bool AreAllStored() const override { return store_.UnsavedCount() == 0; }

     private:
        const EventStore& store_;
    };

    Workplace::Needs WorkplaceNeeds();
    PlaceParts RoleParts();

    void EndProgram() override { CloseAndShutdownEverything(); }
    void EndOnFailure() override;
    bool RenewPorts() override;
    bool IsClient() const { return foundation_.CopyRole() == Role::Client; }

    Foundation& foundation_;
    CentreSettings settings_;
    LiveSettings live_;
    StallWatch stalls_;
    ServiceStatus status_;
    NetworkRole network_;
    TranslationMarks objectViews_{};
    ExportQueues exports_{};
    FieldMap fieldMap_;
    PortConditions conditions_{};
    OperatorPorts operatorPorts_;
    ReloadRequest reload_{};
    RunningCheck check_;
    AlarmLists lists_{};
    TorvexLink torvex_;
    AlarmOutputs outputs_;
    SpooledOutput paper_;
    DeskLink desk_{};
    Journal journal_;
    CommitTimes times_;
    Core core_;
    HistoryWork history_;
    CentreConditions centreConditions_;
    Workplace workplace_;
    StoredByStore stored_;
    CommWait commWait_;
    PortParts portParts_;
    PortList ports_{};
    SimulationBox simulation_;
    NetworkPeers peers_;
    MqttFeed mqtt_;
    CentreStatus facts_;
    StatusService statusService_;
    Duties duties_;
};

}  // namespace nordkeep
