#include "app/Duties.h"

#include "platform/Process.h"
#include "runtime/LogPurge.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNoPortOpen = 3832;
constexpr int kTextMakeAPort = 3836;
constexpr int kTextNoCopier = 5251;

constexpr int kDeafMs = 5000;
constexpr int kOpenTimerMs = 1000;
constexpr int kDisplayTimerMs = 250;
constexpr int kKeepAliveTimerMs = 10'000;
constexpr int kHttpTimerMs = 250;
constexpr int kAlarmLogCopyMs = 30'000;
constexpr int kTorvexRetryMs = 10'000;
constexpr int kWriteRetryMs = 5000;

}  // namespace

// The timers of either role. What a client has no part in is its server's work.
const Duties::Tables Duties::kServing = [] {
    static constexpr Duty kOpen[] = {
        {"traffic file", &Duties::CloseIdleTrafficFile},
        {"ports", &Duties::OpenPorts},
        {"no port open", &Duties::WatchPorts},
        {"conditions", &Duties::RenewConditions},
        {"interval", &Duties::SetOpenInterval},
        {"alive scan", &Duties::ScanAliveTests},
        {"alarm log, cyclic", &Duties::WriteAlarmLogCyclically},
        {"Torvex, cyclic", &Duties::WriteTorvexCyclically},
        {"end of the program", &Duties::EndWhenAsked},
        {"clients", &Duties::SuperviseClients},
        {"ComCall", &Duties::TendComCall},
        {"Torvex, line feeds", &Duties::FeedTorvexLines},
        {"alarm log copy", &Duties::CopyAlarmLog},
        {"service manager", &Duties::TellServiceManager},
    };
    static constexpr Duty kSystem[] = {
        {"sound", &Duties::TendSound},
        {"relay", &Duties::TendRelay},
        {"alive scan, slices", &Duties::ContinueAliveScan},
        {"reload", &Duties::ReloadTranslations},
        {"Torvex, retries", &Duties::RetryTorvex},
        {"parked events", &Duties::DispatchParked},
        {"writes, retries", &Duties::RetryWrites},
        {"printer and queue", &Duties::TendPrinterAndQueue},
    };
    static constexpr Duty kDay[] = {
        {"day on paper", &Duties::PrintYesterday},
        {"old logs", &Duties::PurgeLogs},
        {"old alarms", &Duties::PruneAlarms},
        {"old entries", &Duties::BeginPruning},
    };
    static constexpr Duty kDisplay[] = {
        {"display", &Duties::TickPlace},
        {"status service", &Duties::TickStatusService},
        {"upkeep of the events", &Duties::TendEvents},
        {"journal", &Duties::TendJournal},
    };
    static constexpr Duty kHttp[] = {{"http", &Duties::CleanUpHttp}};
    return Tables{.open = kOpen, .system = kSystem, .day = kDay, .display = kDisplay, .http = kHttp};
}();

const Duties::Tables Duties::kClient = [] {
    static constexpr Duty kOpen[] = {
        {"traffic file", &Duties::CloseIdleTrafficFile},
        {"conditions", &Duties::RenewConditions},
        {"interval", &Duties::SetOpenInterval},
        {"alarm log, cyclic", &Duties::WriteAlarmLogCyclically},
        {"end of the program", &Duties::EndWhenAsked},
        {"alarm log copy", &Duties::CopyAlarmLog},
        {"service manager", &Duties::TellServiceManager},
    };
    static constexpr Duty kSystem[] = {
        {"sound", &Duties::TendSound},
        {"relay", &Duties::TendRelay},
        {"writes, retries", &Duties::RetryWrites},
        {"printer and queue", &Duties::TendPrinterAndQueue},
    };
    static constexpr Duty kDay[] = {
        {"day on paper", &Duties::PrintYesterday},
        {"old logs", &Duties::PurgeLogs},
    };
    static constexpr Duty kDisplay[] = {
        {"server", &Duties::TickClient},
        {"display", &Duties::TickPlace},
        {"status service", &Duties::TickStatusService},
        {"upkeep of the events", &Duties::TendEvents},
    };
    return Tables{.open = kOpen, .system = kSystem, .day = kDay, .display = kDisplay, .http = {}};
}();

Duties::Duties(const Needs& needs)
    : needs_(needs),
      tables_(needs.role == Role::Client ? kClient : kServing),
      openTimer_(needs.loop.NewTimer([this] { RunAll(tables_.open, openTimer_->IntervalMs()); })),
      systemTimer_(needs.loop.NewTimer([this] { RunAll(tables_.system, systemTimer_->IntervalMs()); })),
      keepAliveTimer_(needs.loop.NewTimer([this] { KeepAliveTick(); })),
      displayTimer_(needs.loop.NewTimer([this] { RunAll(tables_.display, kDisplayTimerMs); })),
      httpTimer_(needs.loop.NewTimer([this] { RunAll(tables_.http, kHttpTimerMs); })),
      today_(needs.clock.Now().Midnight()) {}

void Duties::StartTimers() {
    openTimer_->Start(kOpenTimerMs);
    systemTimer_->Start(needs_.settings.SystemTimerInterval);
    keepAliveTimer_->Start(kKeepAliveTimerMs);
    displayTimer_->Start(kDisplayTimerMs);
    if (!tables_.http.empty()) httpTimer_->Start(kHttpTimerMs);
}

void Duties::StopAllButOpenTimer() {
    systemTimer_->Stop();
    keepAliveTimer_->Stop();
    displayTimer_->Stop();
    httpTimer_->Stop();
}

void Duties::RunAll(std::span<const Duty> duties, int intervalMs) {
    const Tick tick{needs_.clock.Now(), intervalMs};
    for (const Duty& duty : duties) {
        const StallWatch::Mark mark(needs_.stalls, duty.name);
        (this->*duty.run)(tick);
    }
}

void Duties::CleanUpHttp(const Tick& tick) {
    needs_.ports.CyclicHTTPCleanup(tick.intervalMs, needs_.conditions);
}

void Duties::TickClient(const Tick& tick) {
    needs_.network.TickClient(tick.intervalMs);
}

void Duties::TickPlace(const Tick& tick) {
    needs_.workplace.Tick(tick.intervalMs);
}

void Duties::TickStatusService(const Tick& tick) {
    needs_.mqtt.Tick(tick.intervalMs);
    needs_.statusService.Tick(tick.intervalMs);
}

// Slice by slice, each in a turn of its own, so that telegrams are taken in between. A tick that comes
// meanwhile begins no second row of slices: with each of them a turn would become longer.
void Duties::TendEvents(const Tick&) {
    if (!std::exchange(isTendingEvents_, true)) TendEventsOnce();
}

void Duties::TendEventsOnce() {
    const bool isMoreUpkeep = needs_.role != Role::Client && needs_.store.UpkeepSlice();
    isTendingEvents_ = needs_.handling.ContinueBulk() || isMoreUpkeep;
    if (!isTendingEvents_) return;
    needs_.loop.Post([this] {
        const StallWatch::Mark mark(needs_.stalls, "upkeep of the events");
        if (!isToEnd_) TendEventsOnce();
    });
}

void Duties::TendJournal(const Tick&) {
    if (isPruningJournal_) isPruningJournal_ = needs_.journal.Prune(needs_.settings.JournalDays);
    needs_.commit.UseIdleMoment(needs_.clock);
}

void Duties::BeginPruning(const Tick&) {
    isPruningJournal_ = true;
}

void Duties::KeepAliveTick() {
    const OleDate today = needs_.clock.Now().Midnight();
    if (today == today_) return;
    today_ = today;
    RunAll(tables_.day, kKeepAliveTimerMs);
}

bool Duties::IsDue(int& counterMs, int intervalMs, int periodMs) const {
    counterMs += intervalMs;
    if (counterMs < periodMs) return false;
    counterMs = 0;
    return true;
}

void Duties::CloseIdleTrafficFile(const Tick& tick) {
    needs_.trafficLog.AddIdleTime(tick.intervalMs);
}

void Duties::OpenPorts(const Tick& tick) {
    needs_.conditions.isAnyClientConnected = needs_.network.IsAnyClientConnected();
    needs_.conditions.isDispatchConfigured = needs_.torvex.IsConfigured();
    needs_.conditions.isDispatchConnected = needs_.torvex.IsConnected();
    needs_.conditions.mutedPort = needs_.workplace.MutedPort();
    if (!needs_.conditions.isShuttingDown) needs_.ports.Tick(tick.intervalMs, needs_.conditions);
}

// A port that is opened anew, or waits for the other side, has some time for it.
void Duties::WatchPorts(const Tick& tick) {
    PortConditions& conditions = needs_.conditions;
    const bool isDeaf =
        Figures().portsOpen == 0 && !conditions.arePortsDisabled && !conditions.isShuttingDown;
    noPortOpenMs_ = isDeaf ? std::min(noPortOpenMs_ + tick.intervalMs, kDeafMs) : 0;
    const bool wasOpen = !conditions.isNoPortOpen;
    conditions.isNoPortOpen = noPortOpenMs_ >= kDeafMs;
    if (!wasOpen || !conditions.isNoPortOpen) return;
    needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextNoPortOpen), LogKind::Failure);
    if (PortNames(needs_.dataFolder).empty())
        needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextMakeAPort), LogKind::Information);
}

void Duties::RenewConditions(const Tick&) {
    if (isToEnd_) return;
    needs_.centre.Renew();
    needs_.network.SendCentreState(needs_.centre);
}

void Duties::SetOpenInterval(const Tick&) {
    if (openTimer_->IntervalMs() != kOpenTimerMs) openTimer_->Start(kOpenTimerMs);
}

void Duties::ScanAliveTests(const Tick& tick) {
    if (needs_.conditions.isShuttingDown) return;
    const bool isNewRound = needs_.aliveScan.Tick(tick.intervalMs, tick.now);
    // While resets are parked, an alarm may still be waiting for its own.
    if (isNewRound && needs_.parked.IsEmpty()) needs_.resets.AcknowledgeDelayed(tick.now);
}

Text Duties::CyclicText(const Text& format, const AlarmFormat& pictures, OleDate now) const {
    return needs_.text.BuildAlarmText({format, pictures.date, pictures.time}, BlankAlarm(now));
}

void Duties::WriteAlarmLogCyclically(const Tick& tick) {
    const EngineSettings& s = needs_.settings;
    const int period = s.AlarmLogFileCyclicWritePeriod;
    if (period < 1 || !IsDue(alarmLogCounterMs_, tick.intervalMs, period)) return;
    const DispatchSettings& d = needs_.dispatchSettings;
    const Text line = CyclicText(s.AlarmLogFileCyclicWriteString,
                                 {{}, d.AlarmLogFileDateFormat, d.AlarmLogFileTimeFormat}, tick.now);
    AppendToFile(needs_.dataFolder.Resolve(kAlarmLogSpool), line + "\r\n");
}

void Duties::WriteTorvexCyclically(const Tick& tick) {
    const EngineSettings& s = needs_.settings;
    if (s.TorvexCyclicWritePeriod < 1) return;
    if (!IsDue(torvexWriteCounterMs_, tick.intervalMs, s.TorvexCyclicWritePeriod)) return;
    needs_.torvex.Send(CyclicText(s.TorvexCyclicWriteString, {{}, "YYYY-MM-DD", "HH:NN:SS"}, tick.now) +
                       "\n");
}

void Duties::EndWhenAsked(const Tick&) {
    if (!isToEnd_) return;
    openTimer_->Stop();
    needs_.loop.Quit(exitStatus_);
}

void Duties::TendComCall(const Tick& tick) {
    if (needs_.conditions.isShuttingDown) return;
    needs_.outputs.ComCall().Tick(tick.intervalMs);
}

void Duties::SuperviseClients(const Tick& tick) {
    needs_.network.Supervise(tick.intervalMs);
}

void Duties::FeedTorvexLines(const Tick&) {
    const int period = needs_.settings.TorvexCyclicLineFeedPeriod;
    if (period < 1 || ++torvexLineFeedTicks_ < period) return;
    torvexLineFeedTicks_ = 0;
    needs_.torvex.Send("\n");
}

void Duties::CopyAlarmLog(const Tick& tick) {
    if (!needs_.settings.CreateLogFile || isToEnd_) return;
    alarmLogCopyCountdownMs_ -= tick.intervalMs;
    if (alarmLogCopyCountdownMs_ >= 1) return;
    alarmLogCopyCountdownMs_ = kAlarmLogCopyMs;
    const std::vector<std::string> arguments = {ToUtf8(needs_.settings.AlarmLogFileName)};
    const NativePath& folder = needs_.dataFolder.Root();
    const auto starts = [&](const char* name) {
        return StartDetached(needs_.programsFolder.Resolve(name), arguments, folder);
    };
    if (starts("NKCopy.exe") || starts("NKCopy") || std::exchange(isCopierMissing_, true)) return;
    needs_.log.WriteSysLog(needs_.language.GetLanguageText(kTextNoCopier), LogKind::Failure);
}

ServiceStatus::Figures Duties::Figures() const {
    const auto& ports = needs_.ports.Ports();
    const auto isOpen = [](const auto& port) { return port->IsOpen(); };
    return {.portsOpen = static_cast<std::size_t>(std::ranges::count_if(ports, isOpen)),
            .ports = ports.size(),
            .newAlarms = needs_.lists.UnackedCount(),
            .wrong = needs_.workplace.WrongInWords()};
}

void Duties::TellServiceManager(const Tick&) {
    if (!isToEnd_) needs_.status.Update(Figures());
}

void Duties::TendSound(const Tick& tick) {
    needs_.outputs.Sound().Tick(tick.intervalMs);
}

void Duties::TendRelay(const Tick& tick) {
    needs_.outputs.Relay().Tick(tick.intervalMs);
}

void Duties::ContinueAliveScan(const Tick&) {
    if (needs_.aliveScan.IsRunning()) needs_.aliveScan.Continue();
}

void Duties::TakeInSettings() {
    if (!needs_.reload.TakeSettings()) return;
    needs_.workplace.RenewSettings();
    needs_.check.Begin();
}

bool Duties::TakeInPorts() {
    if (needs_.portRenewal.RenewPorts()) return true;
    needs_.reload.AskForPorts();
    return false;
}

// Lines that were made anew need their sets, and a place in the tree, here and at the clients.
void Duties::ReloadTranslations(const Tick& tick) {
    TakeInSettings();
    const bool isDue = needs_.reloadWatch.Tick(tick.intervalMs);
    const bool isAsked = needs_.reload.Take();
    const bool arePortsAsked = needs_.reload.TakePorts() || isAsked;
    const bool areTakenIn = arePortsAsked && TakeInPorts();
    if (!isAsked && !isDue && !areTakenIn) return;
    needs_.translations.ReloadAllTranslations(true, needs_.ports.Bindings());
    needs_.translations.DeleteLastEvents();
    needs_.network.SendReload();
    needs_.check.Begin();
}

void Duties::RetryTorvex(const Tick& tick) {
    const TorvexSettings& s = needs_.torvexSettings;
    if (s.DelayAndWaitForAck < 1 && !s.RetryFailedTransmissions) return;
    if (!IsDue(torvexRetryCounterMs_, tick.intervalMs, kTorvexRetryMs)) return;
    needs_.dispatcher.SendWaitingToTorvex(tick.now);
}

void Duties::DispatchParked(const Tick& tick) {
    needs_.parked.Tick(tick.now);
}

void Duties::RetryWrites(const Tick& tick) {
    if (IsDue(writeRetryCounterMs_, tick.intervalMs, kWriteRetryMs)) needs_.store.RetryFailedWrites();
}

void Duties::TendPrinterAndQueue(const Tick& tick) {
    needs_.outputs.TendPrinterAndQueue(tick.intervalMs);
}

void Duties::PrintYesterday(const Tick& tick) {
    needs_.workplace.PrintDay(tick.now.PlusDays(-1));
}

void Duties::PurgeLogs(const Tick& tick) {
    PurgeOldLogs(needs_.dataFolder, needs_.role, needs_.settings.LogFileSavePeriod, tick.now);
}

void Duties::PruneAlarms(const Tick&) {
    needs_.store.PruneOldAlarms();
}

}  // namespace nordkeep
