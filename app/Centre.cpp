#include "app/Centre.h"

#include "platform/Process.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextPortsDisabledQuestion = 1147;
constexpr int kTextPortsDisabled = 1148;
constexpr int kTextStarted = 3500;
constexpr int kTextDataFolder = 3501;
constexpr int kTextStandAlone = 3502;
constexpr int kTextServer = 3503;
constexpr int kTextClient = 3504;
constexpr int kTextService = 3505;
constexpr int kTextShuttingDown = 3506;
constexpr int kTextCannotStore = 3518;

int ModeText(const Foundation& foundation) {
    if (foundation.CopyRole() == Role::Client) return kTextClient;
    return foundation.CopyRole() == Role::Server ? kTextServer : kTextStandAlone;
}

AliveTestPace PaceOf(const CommandLine& commandLine) {
    return commandLine.speedUpAliveTest ? AliveTestPace::Seconds : AliveTestPace::Minutes;
}

}  // namespace

Centre::Centre(Foundation& f)
    : foundation_(f),
      settings_(f.Files()),
      stalls_(f.Platform().clock, f.Platform().loop, f.Log(), f.Texts()),
      status_(f.Platform().serviceManager, f.Platform().loop, f.Texts()),
      commit_([this] { foundation_.Platform().loop.Post([this] { SettleReplies(); }); }),
      network_(f),
      fieldMap_(f.Files()),
      lookup_(MakeLookupRules(settings_.translation, f.Texts())),
      timers_(settings_.translation, PaceOf(f.Switches()), f.Log()),
      store_({.dataFolder = f.DataFolder(),
              .files = f.Files(),
              .language = f.Texts(),
              .clock = f.Platform().clock,
              .log = f.Log(),
              .commit = commit_,
              .replica = network_.Alarms(),
              .views = lists_,
              .role = f.CopyRole(),
              .randomSeed = StartSeed()},
             settings_.store),
      translations_({.dataFolder = f.DataFolder(),
                     .files = f.Files(),
                     .language = f.Texts(),
                     .clock = f.Platform().clock,
                     .log = f.Log(),
                     .views = objectViews_,
                     .settings = settings_.translation,
                     .timers = timers_}),
      servicePeriods_({.dataFolder = f.DataFolder(),
                       .views = objectViews_,
                       .replica = network_.Objects(),
                       .settings = settings_.translation}),
      torvex_(settings_.torvex, f.Platform().sockets, f.Platform().loop),
      outputs_({.dataFolder = f.DataFolder(),
                .files = f.Files(),
                .language = f.Texts(),
                .log = f.Log(),
                .text = store_.Texts(),
                .dispatchSettings = settings_.dispatch,
                .deskSettings = settings_.desk,
                .settings = settings_.outputs,
                .comCallSettings = settings_.comCall,
                .sockets = f.Platform().sockets,
                .serial = f.Platform().serial,
                .queues = f.Platform().queues,
                .printer = f.Platform().printer,
                .sound = f.Platform().sound,
                .isSilent = f.IsService()}),
      handling_({.store = store_, .views = lists_, .clock = f.Platform().clock, .desk = desk_}),
      resets_(store_, handling_, f.Platform().clock, settings_.resets),
      workplace_(WorkplaceNeeds()),
      dispatcher_({.dataFolder = f.DataFolder(),
                   .language = f.Texts(),
                   .clock = f.Platform().clock,
                   .log = f.Log(),
                   .text = store_.Texts(),
                   .settings = settings_.dispatch,
                   .deskSettings = settings_.desk,
                   .torvexSettings = settings_.torvex,
                   .store = store_,
                   .resets = resets_,
                   .torvex = torvex_,
                   .desk = desk_,
                   .outputs = outputs_}),
      parked_(resets_, dispatcher_, settings_.resets),
      intake_({.dataFolder = f.DataFolder(),
               .files = f.Files(),
               .language = f.Texts(),
               .clock = f.Platform().clock,
               .settings = settings_.intake,
               .translationSettings = settings_.translation,
               .lookup = lookup_,
               .timers = timers_,
               .translations = translations_,
               .views = objectViews_,
               .replica = network_.Objects(),
               .store = store_,
               .resets = resets_,
               .parked = parked_,
               .dispatcher = dispatcher_,
               .fieldMap = &fieldMap_}),
      aliveScan_({.translations = translations_,
                  .periods = servicePeriods_,
                  .alarm = intake_,
                  .telegramExport = exports_,
                  .views = objectViews_,
                  .replica = network_.Objects(),
                  .clock = f.Platform().clock,
                  .settings = settings_.translation,
                  .timers = timers_}),
      reloadWatch_(translations_, servicePeriods_, settings_.translation),
      portParts_(
          {.dataFolder = f.DataFolder(),
           .settings = f.Files(),
           .language = f.Texts(),
           .log = f.Log(),
           .trafficLog = f.Traffic(),
           .clock = f.Platform().clock,
           .loop = f.Platform().loop,
           .sockets = f.Platform().sockets,
           .serial = f.Platform().serial,
           .intake = intake_,
           .commit = commit_,
           .stalls = stalls_,
           .findCaller = [this](const PortBinding& ownPort,
                                TextView number) { return FindCaller(ownPort, ports_.Bindings(), number); },
           .exports = &exports_,
           .areAllEventsStored = [this] { return store_.UnsavedCount() == 0; },
           .inet = &f.Platform().inet}),
      simulation_({.intake = intake_,
                   .translations = translations_,
                   .clock = f.Platform().clock,
                   .loop = f.Platform().loop,
                   .ports = [this] { return PortsToSimulate(); },
                   .role = f.CopyRole(),
                   .randomSeed = static_cast<std::uint32_t>(StartSeed())}),
      duties_({.dataFolder = f.DataFolder(),
               .programFolder = f.ProgramFolder(),
               .clock = f.Platform().clock,
               .loop = f.Platform().loop,
               .role = f.CopyRole(),
               .trafficLog = f.Traffic(),
               .settings = settings_.engine,
               .dispatchSettings = settings_.dispatch,
               .torvexSettings = settings_.torvex,
               .resetSettings = settings_.resets,
               .text = store_.Texts(),
               .store = store_,
               .torvex = torvex_,
               .outputs = outputs_,
               .dispatcher = dispatcher_,
               .resets = resets_,
               .parked = parked_,
               .translations = translations_,
               .aliveScan = aliveScan_,
               .reloadWatch = reloadWatch_,
               .ports = ports_,
               .conditions = conditions_,
               .lists = lists_,
               .stalls = stalls_,
               .status = status_,
               .network = network_,
               .workplace = workplace_}) {
    workplace_.SetDispatcher(&dispatcher_);
}

Workplace::Needs Centre::WorkplaceNeeds() {
    return {.foundation = foundation_,
            .settings = settings_,
            .lists = lists_,
            .store = store_,
            .handling = handling_,
            .desk = desk_,
            .translations = translations_,
            .marks = objectViews_,
            .servicePeriods = servicePeriods_,
            .timers = timers_,
            .torvex = torvex_,
            .outputs = outputs_,
            .network = network_,
            .conditions = conditions_,
            .portTree = [this] { return MakePortTree(PortsInTree()); },
            .hasGoogolPort = [this] { return hasGoogolPort_; },
            .setClock = [this] { SetClocks(); },
            .sendOnPort = [this](const Text& portName, TextView bytes) { SendOnPort(portName, bytes); },
            .requestReload = [this] { duties_.RequestReload(); },
            .simulateAlarm = [this] { simulation_.Open(); },
            .simulate100Alarms = [this] { simulation_.RaiseHundred(); },
            .endOnFailure = [this] { EndOnFailure(); },
            .endProgram = [this] { CloseAndShutdownEverything(); }};
}

const Centre::Step Centre::kStartSteps[] = {
    {"ports switched off", &Centre::DecideOnPorts},
    {"start lines", &Centre::WriteStartLines},
    {"ports", &Centre::MakePorts},
    {"translations", &Centre::LoadTranslations},
    // Open before the events are read: what callers send meanwhile waits in the system.
    {"open ports", &Centre::OpenPorts},
    {"stored events", &Centre::LoadStoredEvents},
    {"state of the server", &Centre::BringInState},
    {"timers", &Centre::StartTimers},
    {"service manager", &Centre::TellReady},
};

const Centre::Step Centre::kStopSteps[] = {
    {"service manager", &Centre::TellStopping},
    {"timers", &Centre::StopTimers},
    {"windows", &Centre::CloseWindows},
    {"client's scratch files", &Centre::RemoveScratchFiles},
    {"formats", &Centre::FinishFormats},
    {"waiting replies", &Centre::SettleReplies},
    {"ports", &Centre::ClosePorts},
    {"parked events", &Centre::DispatchParked},
    {"outputs", &Centre::CloseOutputs},
    {"last events", &Centre::SaveLastEvents},
    {"view", &Centre::SaveView},
    {"stored events", &Centre::SettleReplies},
    {"network", &Centre::CloseNetwork},
};

void Centre::Start() {
    network_.Attach({.store = store_,
                     .handling = handling_,
                     .views = lists_,
                     .translations = translations_,
                     .objectViews = objectViews_,
                     .servicePeriods = servicePeriods_,
                     .timers = timers_,
                     .torvex = torvex_,
                     .ports = [this] { return PortsInTree(); },
                     .requestReload = [this] { duties_.RequestReload(); },
                     .screen = workplace_});
    store_.SetOutageListener([this](const Text& reason) { RaiseStorageAlarm(reason); });
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

// Operators see it although it cannot be stored either.
void Centre::RaiseStorageAlarm(const Text& reason) {
    intake_.HandleIncomingEvent(
        {.AlarmTime = foundation_.Platform().clock.Now(),
         .ProtocolType = kOwnProtocol,
         .ExtraText = foundation_.Texts().GetLanguageText(kTextCannotStore) + reason});
}

void Centre::EndOnFailure() {
    duties_.SetExitStatus(1);
    CloseAndShutdownEverything();
}

std::vector<PortInTree> Centre::PortsInTree() const {
    std::vector<PortInTree> tree;
    for (const auto& port : ports_.Ports()) {
        const cPort& known = *port;
        tree.push_back({known.Event().m_PortDescription, &known.Event().binding});
    }
    return tree;
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
    log.WriteSysLog(text(ModeText(foundation_)) + service, LogKind::Information);
}

void Centre::MakePorts() {
    if (IsClient()) return;
    ports_.Discover(portParts_);
    std::vector<DebugPort> debugged;
    for (const auto& port : ports_.Ports()) {
        const EventPort& event = std::as_const(*port).Event();
        debugged.push_back({.name = event.PortName, .description = event.m_PortDescription});
    }
    workplace_.Debug().SetPorts(std::move(debugged));
    hasGoogolPort_ = std::ranges::any_of(ports_.Ports(), [](const auto& port) { return port->HasClock(); });
}

void Centre::LoadTranslations() {
    if (!IsClient()) translations_.ReloadAllTranslations(true, ports_.Bindings());
}

void Centre::OpenPorts() {
    if (!IsClient()) torvex_.Start();
    ports_.Tick(0, conditions_);
}

void Centre::LoadStoredEvents() {
    if (IsClient()) return;
    MakeFolder(foundation_.DataFolder().Resolve("Data\\Events"));
    store_.LoadEvents();
}

void Centre::BringInState() {
    network_.BringInState();
}

void Centre::StartTimers() {
    duties_.StartTimers();
    stalls_.Start();
}

void Centre::TellReady() {
    status_.Ready(duties_.Figures());
}

void Centre::TellStopping() {
    status_.Stopping();
}

void Centre::StopTimers() {
    duties_.StopAllButOpenTimer();
    stalls_.Stop();
}

void Centre::FinishFormats() {
    ports_.FinishAll();
}

void Centre::SettleReplies() {
    const StallWatch::Mark mark(stalls_, "storing events");
    commit_.Commit();
}

void Centre::ClosePorts() {
    ports_.CloseAll();
}

void Centre::DispatchParked() {
    parked_.DispatchAll();
}

void Centre::CloseOutputs() {
    torvex_.Close();
    outputs_.Close();
}

void Centre::SaveLastEvents() {
    if (!IsClient()) translations_.SaveLastEvents();
}

void Centre::CloseNetwork() {
    network_.Close();
}

void Centre::RemoveScratchFiles() {
    if (!IsClient()) return;
    const NativePath folder = foundation_.DataFolder().Resolve("Settings\\Temp");
    for (const Text& name : ListFiles(folder)) RemoveFile(folder + "/" + ToUtf8(name));
    RemoveFolder(folder);
}

void Centre::CloseWindows() {
    workplace_.Close();
}

void Centre::SaveView() {
    SaveViewState(foundation_.Files(), workplace_.StateToSave());
}

void Centre::SetClocks() {
    for (const auto& port : ports_.Ports()) port->RequestClock();
}

void Centre::SendOnPort(const Text& portName, TextView bytes) {
    for (const auto& port : ports_.Ports()) {
        if (port->Event().PortName == portName) port->SendBytes(bytes);
    }
}

std::vector<SimulationBox::Port> Centre::PortsToSimulate() const {
    std::vector<SimulationBox::Port> known;
    for (const auto& port : ports_.Ports()) {
        const cPort& one = *port;
        known.push_back({one.Event().m_PortDescription, &one.Event()});
    }
    return known;
}

}  // namespace nordkeep
