#include "app/Centre.h"

#include "console/boxes/AboutText.h"
#include "platform/Process.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextPortsDisabledQuestion = 1147;
constexpr int kTextPortsDisabled = 1148;
constexpr int kTextStarted = 3500;
constexpr int kTextDataFolder = 3501;
constexpr int kTextService = 3505;
constexpr int kTextShuttingDown = 3506;
constexpr int kTextNotSaved = 3777;

AliveTestPace PaceOf(const CommandLine& commandLine) {
    return commandLine.speedUpAliveTest ? AliveTestPace::Seconds : AliveTestPace::Minutes;
}

}  // namespace

Centre::Centre(Foundation& f)
    : foundation_(f),
      settings_(f.Files()),
      live_(f.Files(), settings_),
      stalls_(f.Platform().clock, f.Platform().loop, f.Log(), f.Texts()),
      status_(f.Platform().serviceManager, f.Platform().loop, f.Texts()),
      network_(f),
      fieldMap_(f.Files()),
      operatorPorts_(ports_),
      check_({.dataFolder = f.DataFolder(),
              .programFolder = f.ProgramFolder(),
              .language = f.Texts(),
              .role = f.CopyRole(),
              .loop = f.Platform().loop,
              .log = f.Log(),
              .stalls = stalls_}),
      torvex_({.settings = settings_.torvex,
               .sockets = f.Platform().sockets,
               .loop = f.Platform().loop,
               .log = f.Log(),
               .language = f.Texts()}),
      outputs_({.dataFolder = f.DataFolder(),
                .files = f.Files(),
                .language = f.Texts(),
                .log = f.Log(),
                .dispatchSettings = settings_.dispatch,
                .deskSettings = settings_.desk,
                .settings = settings_.outputs,
                .comCallSettings = settings_.comCall,
                .sockets = f.Platform().sockets,
                .serial = f.Platform().serial,
                .queues = f.Platform().queues,
                .printer = f.Platform().printer,
                .sound = f.Platform().sound,
                .journal = f.CopyRole() == Role::Client ? nullptr : &journal_,
                .isSilent = f.IsService()}),
      paper_(
          {.dataFolder = f.DataFolder(), .clock = f.Platform().clock, .log = f.Log(), .language = f.Texts()}),
      journal_(f.Platform().journal, f.DataFolder(), f.Platform().clock),
      times_{.clock = f.Platform().clock},
      core_({.dataFolder = f.DataFolder(),
             .files = f.Files(),
             .language = f.Texts(),
             .clock = f.Platform().clock,
             .log = f.Log(),
             .disk = f.Platform().disk,
             .journal = f.CopyRole() == Role::Client ? nullptr : &journal_,
             .requestCommit = [this] { foundation_.Platform().loop.PostAtEnd([this] { SettleReplies(); }); },
             .alarmReplica = network_.Alarms(),
             .objectReplica = network_.Objects(),
             .alarmViews = lists_,
             .objectViews = objectViews_,
             .desk = desk_,
             .outputs = outputs_,
             .torvex = torvex_,
             .telegramExport = exports_,
             .fieldMap = &fieldMap_,
             .role = f.CopyRole(),
             .pace = PaceOf(f.Switches()),
             .randomSeed = StartSeed()},
            settings_),
      history_(journal_, f.Platform().clock, f.Platform().loop),
      centreConditions_({.clock = f.Platform().clock,
                         .settings = settings_.engine,
                         .server = f.Server(),
                         .ports = conditions_,
                         .check = check_,
                         .torvex = torvex_,
                         .outputs = outputs_,
                         .paper = paper_,
                         .mqtt = mqtt_,
                         .portList = ports_,
                         .store = core_.store,
                         .commit = core_.commit,
                         .translations = core_.translations}),
      workplace_(WorkplaceNeeds(), MakePlaceRole(RoleParts())),
      stored_(core_.store),
      commWait_(f.Platform().loop, f.Platform().clock),
      portParts_({.dataFolder = f.DataFolder(),
                  .settings = f.Files(),
                  .language = f.Texts(),
                  .log = f.Log(),
                  .trafficLog = f.Traffic(),
                  .clock = f.Platform().clock,
                  .loop = f.Platform().loop,
                  .sockets = f.Platform().sockets,
                  .serial = f.Platform().serial,
                  .inet = f.Platform().inet,
                  .intake = core_.intake,
                  .commit = core_.commit,
                  .stored = stored_,
                  .stalls = stalls_,
                  .exports = exports_,
                  .wait = commWait_}),
      simulation_({.intake = core_.intake,
                   .translations = core_.translations,
                   .clock = f.Platform().clock,
                   .loop = f.Platform().loop,
                   .ports = operatorPorts_,
                   .randomSeed = static_cast<std::uint32_t>(StartSeed())}),
      peers_(f, network_,
             {.store = core_.store,
              .commit = core_.commit,
              .handling = core_.handling,
              .views = lists_,
              .translations = core_.translations,
              .objectViews = objectViews_,
              .servicePeriods = core_.servicePeriods,
              .deeds = core_.deeds,
              .history = history_,
              .timers = core_.timers,
              .torvex = torvex_,
              .ports = operatorPorts_,
              .portList = ports_,
              .reload = reload_,
              .screen = workplace_}),
      mqtt_({.clients = f.Platform().mqtt,
             .settings = settings_.mqtt,
             .dataFolder = f.DataFolder(),
             .clock = f.Platform().clock,
             .language = f.Texts(),
             .log = f.Log(),
             .events = core_.store.Events(),
             .journal = journal_}),
      facts_({.language = f.Texts(),
              .clock = f.Platform().clock,
              .role = f.CopyRole(),
              .conditions = centreConditions_,
              .ports = ports_,
              .store = core_.store,
              .commit = core_.commit,
              .lists = lists_,
              .stalls = stalls_,
              .clients = f.Clients()}),
      statusService_({.server = f.Platform().http,
                      .settings = settings_.status,
                      .dataFolder = f.DataFolder(),
                      .clock = f.Platform().clock,
                      .language = f.Texts(),
                      .log = f.Log(),
                      .source = facts_,
                      .events = core_.store.Events(),
                      .times = times_,
                      .journal = f.CopyRole() == Role::Client ? nullptr : &journal_}),
      duties_({.dataFolder = f.DataFolder(),
               .programsFolder = f.ProgramsFolder(),
               .clock = f.Platform().clock,
               .loop = f.Platform().loop,
               .role = f.CopyRole(),
               .language = f.Texts(),
               .log = f.Log(),
               .trafficLog = f.Traffic(),
               .settings = settings_.engine,
               .dispatchSettings = settings_.dispatch,
               .torvexSettings = settings_.torvex,
               .resetSettings = settings_.resets,
               .text = core_.store.Texts(),
               .store = core_.store,
               .handling = core_.handling,
               .commit = core_.commit,
               .journal = journal_,
               .torvex = torvex_,
               .outputs = outputs_,
               .dispatcher = core_.dispatcher,
               .resets = core_.resets,
               .parked = core_.parked,
               .translations = core_.translations,
               .aliveScan = core_.aliveScan,
               .reloadWatch = core_.reloadWatch,
               .ports = ports_,
               .portRenewal = *this,
               .conditions = conditions_,
               .centre = centreConditions_,
               .lists = lists_,
               .stalls = stalls_,
               .status = status_,
               .check = check_,
               .network = peers_,
               .reload = reload_,
               .mqtt = mqtt_,
               .statusService = statusService_,
               .workplace = workplace_}) {
    core_.commit.SetTimes(&times_);
}

Workplace::Needs Centre::WorkplaceNeeds() {
    return {.foundation = foundation_,
            .settings = settings_,
            .live = live_,
            .lists = lists_,
            .store = core_.store,
            .handling = core_.handling,
            .deeds = core_.deeds,
            .desk = desk_,
            .translations = core_.translations,
            .marks = objectViews_,
            .outputs = outputs_,
            .paper = paper_,
            .lines = operatorPorts_,
            .end = *this,
            .dispatcher = core_.dispatcher,
            .intake = core_.intake,
            .torvex = torvex_,
            .simulation = simulation_};
}

PlaceParts Centre::RoleParts() {
    return {.foundation = foundation_,
            .store = core_.store,
            .lists = lists_,
            .servicePeriods = core_.servicePeriods,
            .deeds = core_.deeds,
            .history = history_,
            .timers = core_.timers,
            .objectViews = objectViews_,
            .torvex = torvex_,
            .sound = outputs_.Sound(),
            .conditions = centreConditions_,
            .network = network_,
            .peers = peers_,
            .ports = operatorPorts_,
            .check = check_,
            .portList = ports_,
            .reload = reload_};
}

const Centre::Step Centre::kStartSteps[] = {
    {"journal", &Centre::OpenJournal},
    {"start lines", &Centre::WriteStartLines},
    {"ports", &Centre::MakePorts},
    {"translations", &Centre::LoadTranslations},
    // Open before the events are read: what callers send meanwhile waits in the system.
    {"open ports", &Centre::OpenPorts},
    {"stored events", &Centre::LoadStoredEvents},
    {"state of the server", &Centre::BringInState},
    {"timers", &Centre::StartTimers},
    {"check", &Centre::BeginCheck},
    {"status service", &Centre::OpenStatusService},
    {"service manager", &Centre::TellReady},
};

const Centre::Step Centre::kStopSteps[] = {
    {"service manager", &Centre::TellStopping},
    {"timers", &Centre::StopTimers},
    {"status service", &Centre::CloseStatusService},
    {"deeds of operators", &Centre::FinishDeeds},
    {"windows", &Centre::CloseWindows},
    {"client's scratch files", &Centre::RemoveScratchFiles},
    {"formats", &Centre::FinishFormats},
    {"waiting replies", &Centre::SettleReplies},
    {"ports", &Centre::ClosePorts},
    {"parked events", &Centre::DispatchParked},
    {"outputs", &Centre::CloseOutputs},
    {"last events", &Centre::SaveLastEvents},
    {"broker", &Centre::CloseMqtt},
    {"view", &Centre::SaveView},
    {"stored events", &Centre::SettleReplies},
    {"network", &Centre::CloseNetwork},
    {"journal", &Centre::CloseJournal},
    {"paper", &Centre::ClosePaper},
};

void Centre::Start() {
    for (const Step& step : kStartSteps) (this->*step.run)();
}

void Centre::CloseAndShutdownEverything() {
    if (conditions_.isShuttingDown) return;
    conditions_.isShuttingDown = true;
    foundation_.Log().WriteSysLog(foundation_.Texts().GetLanguageText(kTextShuttingDown),
                                  LogKind::Information);
    for (const Step& step : kStopSteps) (this->*step.run)();
    duties_.EndProgram();
}

void Centre::EndOnFailure() {
    duties_.SetExitStatus(1);
    CloseAndShutdownEverything();
}

void Centre::DecideOnPorts() {
    const PlatformParts& platform = foundation_.Platform();
    const CommandLine& switches = foundation_.Switches();
    const auto text = [&](int number) { return foundation_.Texts().GetLanguageText(number); };
    if (switches.forceDisablePorts) {
        conditions_.arePortsDisabled = true;
        foundation_.Log().WriteSysLog(text(kTextPortsDisabled), LogKind::Failure);
        platform.dialogs.ShowNotice(text(kTextPortsDisabled));
    } else if (switches.askForDisablePorts && !foundation_.IsService()) {
        conditions_.arePortsDisabled = platform.dialogs.AskYesNo(text(kTextPortsDisabledQuestion));
    }
    conditions_.isServer = foundation_.CopyRole() == Role::Server;
    foundation_.Traffic().Configure(
        {settings_.engine.ContinousDebugToFile, settings_.engine.ContinousDebugFormatAsHex},
        foundation_.CopyRole());
}

void Centre::WriteStartLines() {
    const auto text = [&](int number) { return foundation_.Texts().GetLanguageText(number); };
    SysLog& log = foundation_.Log();
    log.WriteSysLog(text(kTextStarted) + NORDKEEP_VERSION, LogKind::Information);
    log.WriteSysLog(text(kTextDataFolder) + FromUtf8(foundation_.DataFolder().Root()), LogKind::Information);
    const Text service = foundation_.IsService() ? ", " + text(kTextService) : Text();
    log.WriteSysLog(text(ModeText(foundation_.CopyRole())) + service, LogKind::Information);
}

void Centre::MakePorts() {
    if (IsClient()) return;
    ports_.Discover(portParts_);
    operatorPorts_.NoteMade();
    workplace_.Debug().SetPorts(operatorPorts_.ToDebug());
}

bool Centre::RenewPorts() {
    if (IsClient()) return true;
    const std::optional<bool> hasChanged = ports_.Renew(portParts_);
    if (hasChanged.value_or(false)) {
        operatorPorts_.NoteMade();
        workplace_.Debug().SetPorts(operatorPorts_.ToDebug());
    }
    return hasChanged.has_value();
}

// Before anything can be promised. What cannot be opened now is tried again with each turn that has something
// to keep.
void Centre::OpenJournal() {
    if (IsClient()) return;
    MakeFolder(foundation_.DataFolder().Resolve("Data"));
    journal_.Open();
    outputs_.Open();
}

void Centre::LoadTranslations() {
    if (!IsClient()) core_.translations.ReloadAllTranslations(true, ports_.Bindings());
}

void Centre::OpenPorts() {
    if (!IsClient()) torvex_.Start();
    ports_.Tick(0, conditions_);
}

void Centre::LoadStoredEvents() {
    if (IsClient()) return;
    MakeFolder(foundation_.DataFolder().Resolve("Data\\Events"));
    core_.BringBack();
    ports_.TakeUpHeld(portParts_);
}

void Centre::BringInState() {
    peers_.BringInState();
}

void Centre::StartTimers() {
    duties_.StartTimers();
    stalls_.Start();
}

// Slice by slice, behind everything that receives.
void Centre::BeginCheck() {
    check_.Begin();
}

void Centre::OpenStatusService() {
    if (!IsClient()) mqtt_.Open();
    statusService_.Open();
}

// What the stop itself has noted goes at the next start.
void Centre::CloseMqtt() {
    mqtt_.Close();
}

void Centre::CloseStatusService() {
    statusService_.Close();
}

void Centre::TellReady() {
    status_.Ready(duties_.Figures());
}

void Centre::TellStopping() {
    status_.Stopping();
}

void Centre::StopTimers() {
    duties_.StopAllButOpenTimer();
    check_.Stop();
    stalls_.Stop();
}

// Whoever has ended his alarms and leaves has ended them. Each slice is kept by itself: the journal gathers
// only so many entries of one turn.
void Centre::FinishDeeds() {
    while (core_.handling.ContinueBulk()) core_.commit.Commit();
}

void Centre::FinishFormats() {
    ports_.FinishAll();
}

void Centre::SettleReplies() {
    const StallWatch::Mark mark(stalls_, "storing events");
    core_.commit.Commit();
}

void Centre::ClosePorts() {
    ports_.CloseAll();
}

void Centre::DispatchParked() {
    core_.parked.DispatchAll();
}

void Centre::CloseOutputs() {
    torvex_.Close();
    outputs_.Close();
}

// Behind everything that has to be kept: a flood of pages takes its time.
void Centre::ClosePaper() {
    paper_.Close();
}

void Centre::SaveLastEvents() {
    if (IsClient() || core_.translations.SaveLastEvents()) return;
    foundation_.Log().WriteSysLog(foundation_.Texts().GetLanguageText(kTextNotSaved), LogKind::Failure);
}

void Centre::CloseNetwork() {
    peers_.Close();
}

void Centre::RemoveScratchFiles() {
    if (!IsClient()) return;
    const NativePath folder = foundation_.DataFolder().Resolve("Settings\\Temp");
    for (const Text& name : ListFiles(folder)) RemoveFile(folder + "/" + ToUtf8(name));
    RemoveFolder(folder);
}

void Centre::CloseJournal() {
    if (!IsClient()) core_.StopCleanly();
}

void Centre::CloseWindows() {
    workplace_.Close();
}

void Centre::SaveView() {
    SaveViewState(foundation_.Files(), workplace_.StateToSave());
}

}  // namespace nordkeep
