#pragma once

#include "app/CentreConditions.h"
#include "app/NetworkPeers.h"
#include "app/ReloadRequest.h"
#include "app/RunningCheck.h"
#include "app/ServiceStatus.h"
#include "app/Workplace.h"
#include "app/settings/EngineSettings.h"
#include "console/lists/AlarmLists.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/Dispatcher.h"
#include "pipeline/ParkedEvents.h"
#include "platform/EventLoop.h"
#include "ports/PortList.h"
#include "runtime/StallWatch.h"
#include "runtime/TrafficLog.h"
#include "status/MqttFeed.h"
#include "status/StatusService.h"
#include "translation/AliveScan.h"
#include "translation/ReloadWatch.h"

#include <memory>
#include <span>

namespace nordkeep {

/// Takes in what has changed in the settings files of ports.
class PortRenewal {
 public:
    virtual ~PortRenewal() = default;
    /// False when it has to be asked for again, since a port is in the middle of something.
    virtual bool RenewPorts() = 0;
};

/// Everything periodic, on the timers of the program. A tick runs the table of its role in fixed order; each
/// duty counts the ticks it has seen, so a period is never read from the clock.
class Duties {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const FileTree& programsFolder;
        const Clock& clock;
        EventLoop& loop;
        Role role;
        const Language& language;
        SysLog& log;
        TrafficLog& trafficLog;
        const EngineSettings& settings;
        const DispatchSettings& dispatchSettings;
        const TorvexSettings& torvexSettings;
        const ResetSettings& resetSettings;
        const AlarmText& text;
        EventStore& store;
        AlarmHandling& handling;
        EventCommit& commit;
        Journal& journal;
        TorvexLink& torvex;
        AlarmOutputs& outputs;
        Dispatcher& dispatcher;
        Resets& resets;
        ParkedEvents& parked;
        Translations& translations;
        AliveScan& aliveScan;
        ReloadWatch& reloadWatch;
        PortList& ports;
        PortRenewal& portRenewal;
        PortConditions& conditions;
        CentreConditions& centre;
        const AlarmLists& lists;
        StallWatch& stalls;
        ServiceStatus& status;
        RunningCheck& check;
        NetworkPeers& network;
        ReloadRequest& reload;
        MqttFeed& mqtt;
        StatusService& statusService;
        Workplace& workplace;
    };
    explicit Duties(const Needs& needs);

    void StartTimers();
    void StopAllButOpenTimer();
    ServiceStatus::Figures Figures() const;
    /// The program ends on the next tick of the open timer.
    void EndProgram() { isToEnd_ = true; }
    /// The status with which it ends; 0 unless set.
    void SetExitStatus(int status) { exitStatus_ = status; }

 private:
    /// The tick in hand.
    struct Tick {
        OleDate now;
        int intervalMs;
    };
    struct Duty {
        const char* name;
        void (Duties::*run)(const Tick&);
    };
    /// The duties of one role, by the timer that runs them.
    struct Tables {
        std::span<const Duty> open;
        std::span<const Duty> system;
        std::span<const Duty> day;
        std::span<const Duty> display;
        std::span<const Duty> http;  // empty: the timer does not run
    };
    static const Tables kServing;  // a copy with ports of its own
    static const Tables kClient;

    void RunAll(std::span<const Duty> duties, int intervalMs);
    void KeepAliveTick();

    void CloseIdleTrafficFile(const Tick& tick);
    void OpenPorts(const Tick& tick);
    void WatchPorts(const Tick& tick);
    void RenewConditions(const Tick& tick);
    void SetOpenInterval(const Tick& tick);
    void ScanAliveTests(const Tick& tick);
    void WriteAlarmLogCyclically(const Tick& tick);
    void WriteTorvexCyclically(const Tick& tick);
    void EndWhenAsked(const Tick& tick);
    void SuperviseClients(const Tick& tick);
    void TendComCall(const Tick& tick);
    void FeedTorvexLines(const Tick& tick);
    void CopyAlarmLog(const Tick& tick);
    void TellServiceManager(const Tick& tick);

    void TendSound(const Tick& tick);
    void TendRelay(const Tick& tick);
    void ContinueAliveScan(const Tick& tick);
    void TakeInSettings();
    /// False when that has to wait; it is asked for again then.
    bool TakeInPorts();
    void ReloadTranslations(const Tick& tick);
    void RetryTorvex(const Tick& tick);
    void DispatchParked(const Tick& tick);
    void RetryWrites(const Tick& tick);
    void TendPrinterAndQueue(const Tick& tick);

    void TickClient(const Tick& tick);
    void TickPlace(const Tick& tick);
    void TickStatusService(const Tick& tick);
    void TendEvents(const Tick& tick);
    void TendEventsOnce();
    void TendJournal(const Tick& tick);
    void BeginPruning(const Tick& tick);
    void CleanUpHttp(const Tick& tick);

    void PurgeLogs(const Tick& tick);
    void PruneAlarms(const Tick& tick);
    void PrintYesterday(const Tick& tick);

    bool IsDue(int& counterMs, int intervalMs, int periodMs) const;
    Text CyclicText(const Text& format, const AlarmFormat& pictures, OleDate now) const;

    Needs needs_;
    const Tables& tables_;
    std::unique_ptr<Timer> openTimer_;
    std::unique_ptr<Timer> systemTimer_;
    std::unique_ptr<Timer> keepAliveTimer_;
    std::unique_ptr<Timer> displayTimer_;
    std::unique_ptr<Timer> httpTimer_;
    bool isToEnd_ = false;
    int exitStatus_ = 0;
    bool isPruningJournal_ = false;
    bool isTendingEvents_ = false;
    OleDate today_{};
    int noPortOpenMs_ = 0;
    int alarmLogCounterMs_ = 0;
    int torvexWriteCounterMs_ = 0;
    int torvexLineFeedTicks_ = 0;
    int torvexRetryCounterMs_ = 0;
    int writeRetryCounterMs_ = 0;
    int alarmLogCopyCountdownMs_ = 0;
    bool isCopierMissing_ = false;  // told
};

}  // namespace nordkeep
