#include "app/Workplace.h"

#include "network/FileService.h"
#include "network/RemoteDataFiles.h"
#include "runtime/DataFiles.h"
#include "runtime/IdleSettings.h"

namespace nordkeep {
namespace {

constexpr int kTextEndProgram = 3358;
constexpr int kTextEndClient = 3359;
constexpr TextView kMainSettings = "Settings\\Nordkeep.INI";

std::unique_ptr<DataFiles> FilesOf(Foundation& foundation) {
    if (ServerLink* link = foundation.Server()) return std::make_unique<RemoteDataFiles>(*link);
    return std::make_unique<LocalDataFiles>(foundation.DataFolder());
}

AlarmLists::Looks LooksOf(const Foundation& foundation, const Settings& files, const AlarmCells& cells,
                          const ConsoleSettings& settings) {
    return {.rows = {.cells = &cells,
                     .colors = LoadAlarmColors(files, foundation.Switches().noBackgroundColor),
                     .hasToolTips = settings.ViewAlarmToolTip},
            .unacked = LoadAlarmColumns(files, kUnackedSection),
            .acked = LoadAlarmColumns(files, kAckedSection)};
}

}  // namespace

Workplace::Workplace(const Needs& needs)
    : needs_(needs),
      captions_(needs.foundation.Texts()),
      printerSettings_(needs.settings.printer),
      files_(FilesOf(needs.foundation)),
      rights_{.role = needs.foundation.CopyRole()},
      cells_(needs.store, captions_,
             {needs.settings.console.AlarmDateFormat, needs.settings.console.AlarmTimeFormat,
              needs.settings.console.ViewStatusAsNumber}),
      debug_({.dataFolder = needs.foundation.DataFolder(),
              .clock = needs.foundation.Platform().clock,
              .captions = captions_,
              .log = needs.foundation.Log(),
              .send = needs.sendOnPort}),
      printing_({.store = needs.store,
                 .captions = captions_,
                 .settings = printerSettings_,
                 .pageSettings = needs.settings.alarmPages,
                 .output = *this}),
      commands_({.store = needs.store,
                 .handling = needs.handling,
                 .dialogs = needs.foundation.Platform().dialogs,
                 .language = needs.foundation.Texts()}),
      sheet_(SheetNeeds()),
      map_({.files = *files_,
            .dataFolder = needs.foundation.DataFolder(),
            .captions = captions_,
            .loop = needs.foundation.Platform().loop,
            .role = needs.foundation.CopyRole(),
            .defaultZoom = needs.settings.pictures.DefaultZoom}),
      picture_(needs.settings.pictures, needs.foundation.DataFolder(), needs.foundation.Platform().loop),
      windows_({.sheet = sheet_,
                .map = map_,
                .picture = picture_,
                .store = needs.store,
                .loop = needs.foundation.Platform().loop,
                .isQuestionUp = [this] { return IsQuestionUp(); },
                .isFlood = [this] { return IsFlood(); },
                .isRequestPending = [this] { return IsRequestPending(); }}),
      login_([this](const Text& userName, const Text& password) { SendLogin(userName, password); }),
      reconnect_(ReconnectNeeds()),
      period_({.translations = needs.translations,
               .setService = [this](cTranslate& set, cIDCode& object,
                                    const ServicePeriod& period) { SetService(set, object, period); },
               .captions = captions_,
               .clock = needs.foundation.Platform().clock,
               .rights = [this] { return Rights(); }}),
      editor_(EditorNeeds()),
      inForce_(needs.foundation.Files(), FromUtf8(needs.foundation.DataFolder().Resolve(kMainSettings))),
      shift_({.store = needs.store,
              .translations = needs.translations,
              .captions = captions_,
              .clock = needs.foundation.Platform().clock,
              .printerSettings = printerSettings_}),
      main_(MainNeeds(), needs.settings.view) {
    sysLog_.SetCaptions(&captions_);
    needs_.lists.Attach(LooksOf(needs.foundation, needs.foundation.Files(), cells_, needs.settings.console));
    needs_.foundation.Traffic().SetListener(
        [this](TextView bytes, TrafficDirection direction, TextView port) {
            debug_.NoteTraffic(bytes, direction, port);
        });
    ListSettings();
    needs_.desk.Attach(*this);
}

Workplace::~Workplace() {
    needs_.desk.Detach();
    needs_.foundation.Traffic().SetListener({});
}

CommentBox::Needs Workplace::SheetNeeds() {
    const PlatformParts& platform = needs_.foundation.Platform();
    return {.store = needs_.store,
            .handling = needs_.handling,
            .translations = needs_.translations,
            .files = *files_,
            .dialogs = platform.dialogs,
            .language = needs_.foundation.Texts(),
            .captions = captions_,
            .settings = needs_.settings.comments,
            .printer = *this,
            .printerSettings = printerSettings_,
            .rights = [this] { return Rights(); },
            .isRequestPending = [this] { return IsRequestPending(); },
            .sendToDispatcher = [this](const Text& line) { return SendToDispatcher(line); },
            .showMap =
                [this](const Text& reference, std::int32_t filePointer) {
                    windows_.OpenMap(reference, filePointer, OpenedBy::Operator);
                }};
}

EditorBox::Needs Workplace::EditorNeeds() {
    return {.files = *files_,
            .dataFolder = needs_.foundation.DataFolder(),
            .dialogs = needs_.foundation.Platform().dialogs,
            .captions = captions_,
            .role = needs_.foundation.CopyRole(),
            .mayEdit =
                [this] {
                    const OperatorRights rights = Rights();
                    return rights.MayEdit() && rights.MayChange();
                },
            .isRequestPending = [this] { return IsRequestPending(); },
            .saved =
                [this](const Text& path) {
                    if (!IsClient() && IsTranslationFile(path)) needs_.requestReload();
                }};
}

ReconnectBox::Needs Workplace::ReconnectNeeds() {
    const PlatformParts& platform = needs_.foundation.Platform();
    return {.language = needs_.foundation.Texts(),
            .captions = captions_,
            .clock = platform.clock,
            .loop = platform.loop,
            .reconnectIntervalMs = needs_.foundation.Network().NetworkReconnectInterval,
            .reconnectNow =
                [this] {
                    if (ClientSession* session = needs_.network.Session()) session->ReconnectNow();
                },
            .endProgram =
                [this] {
                    if (ClientSession* session = needs_.network.Session()) session->EndProgram();
                }};
}

MainBox::Needs Workplace::MainNeeds() {
    return {.store = needs_.store,
            .lists = needs_.lists,
            .commands = commands_,
            .cells = cells_,
            .translations = needs_.translations,
            .marks = needs_.marks,
            .translationSettings = needs_.settings.translation,
            .sysLog = sysLog_,
            .debug = debug_,
            .files = *files_,
            .captions = captions_,
            .clock = needs_.foundation.Platform().clock,
            .settings = needs_.settings.console,
            .windows = windows_,
            .portTree = IsClient() ? std::function<std::vector<PortTreeNode>()>{} : needs_.portTree,
            .surroundings = [this] { return Surroundings(); },
            .effects = Effects()};
}

ConsoleEffects Workplace::Effects() {
    return {.silenceSound = [this] { needs_.outputs.Sound().Silence(); },
            .update = [this] { Update(); },
            .setClock = needs_.setClock,
            .login = [this] { login_.Open(OpenedBy::Operator); },
            .logout = [this] { Logout(); },
            .exit = [this] { AskForEnd(); },
            .simulateAlarm = needs_.simulateAlarm,
            .simulate100Alarms = needs_.simulate100Alarms,
            .loadEvents = [this] { LoadEvents(); },
            .choosePrinterFont =
                [this] {
                    if (screen_) screen_->ChoosePrinterFont();
                },
            .showSettings =
                [this] {
                    if (screen_) screen_->ShowSettings();
                },
            .showAbout =
                [this] {
                    if (screen_) screen_->ShowAbout();
                },
            .showShiftList =
                [this] {
                    if (screen_) screen_->ShowShiftList();
                },
            .print = [this](const AlarmRows& list, const std::vector<Text>& keys) { PrintRows(list, keys); },
            .editText =
                [this](const Text& path) {
                    editor_.Open({.path = path, .title = path, .program = needs_.settings.console.EditApp});
                },
            .editTranslation = [this](const Text& path) { EditTranslation(path); },
            .askServicePeriod = [this](const Text& set, const Text& idCode) { period_.Open(set, idCode); },
            .setService = [this](cTranslate& set, cIDCode& object,
                                 const ServicePeriod& period) { SetService(set, object, period); },
            .resetAliveTests = [this](cTranslate& set, cIDCode& object) { ResetAliveTests(set, object); }};
}

bool Workplace::IsRequestPending() const {
    const ServerLink* link = needs_.foundation.Server();
    return link && link->IsRequestPending();
}

OperatorRights Workplace::Rights() const {
    OperatorRights rights = rights_;
    const ServerLink* link = needs_.foundation.Server();
    rights.isConnectionLost = link && link->IsConnectionLost();
    return rights;
}

ConsoleSurroundings Workplace::Surroundings() const {
    const Foundation& foundation = needs_.foundation;
    const ClientSlots* slots = foundation.Clients();
    return {.rights = Rights(),
            .fullName = fullName_,
            .server = foundation.Network().ServerAddress,
            .clients = slots ? static_cast<int>(slots->ConnectedCount()) : 0,
            .isSounding = needs_.outputs.Sound().IsSounding(),
            .arePortsDisabled = needs_.conditions.arePortsDisabled,
            .isFlood = IsFlood(),
            .hasGoogolPort = needs_.hasGoogolPort(),
            .isSimulation = foundation.Switches().simulate,
            .mayAskServer = !IsRequestPending()};
}

void Workplace::FirstShown() {
    const NetworkSettings& network = needs_.foundation.Network();
    const bool logsInByItself = !network.AutoLoginUserName.empty() && !network.AutoLoginPassword.empty();
    if (IsClient() && network.ViewLoginFormAutomatically && !logsInByItself) AskForLogin();
}

bool Workplace::IsFlood() const {
    return rate_.IsFlood(needs_.foundation.Platform().clock.MonotonicMs());
}

void Workplace::Tick(int elapsedMs) {
    debug_.Tick(elapsedMs);
    sheet_.Tick();
    main_.Tick(elapsedMs);
}

void Workplace::AskForEnd() {
    const Text question = captions_(IsClient() ? kTextEndClient : kTextEndProgram);
    if (needs_.foundation.Platform().dialogs.AskYesNo(question, Answer::No)) needs_.endProgram();
}

void Workplace::Close() {
    windows_.CloseAll();
    login_.Close();
    period_.Close();
    if (screen_) screen_->PrepareForEnd();
}

// --- Commands

void Workplace::PrintRows(const AlarmRows& list, const std::vector<Text>& keys) {
    std::vector<std::int32_t> filePointers;
    for (const Text& key : keys) filePointers.push_back(LeadingInt32(key));
    const bool isOld = &list == &needs_.lists.Acked();
    printing_.PrintRows(captions_(CaptionOf(isOld ? Tab::Acked : Tab::Unacked)), filePointers);
}

void Workplace::EditTranslation(const Text& path) {
    const ConsoleSettings& settings = needs_.settings.console;
    const bool isDataCode = UpperCase(path).ends_with(".DATACODE");
    editor_.Open({.path = path,
                  .title = path,
                  .program = isDataCode ? settings.DataCodeEditApp : settings.TypeAndIDCodeEditApp});
}

// On a client the server's answer changes the mirror.
void Workplace::SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) {
    if (ClientReplica* server = needs_.network.Client()) {
        server->RequestServiceMode(set, object, period);
    } else {
        needs_.servicePeriods.Set(set, object, period);
    }
}

void Workplace::ResetAliveTests(cTranslate& set, cIDCode& object) {
    if (ClientReplica* server = needs_.network.Client()) return server->RequestAliveTestReset(set, object);
    const AliveTestReset reset({needs_.timers, needs_.marks, needs_.network.Objects()});
    reset.Reset(set, object, needs_.foundation.Platform().clock.Now());
}

void Workplace::Update() {
    if (IsClient()) {
        needs_.network.RequestInitialData();
    } else {
        needs_.requestReload();
    }
}

void Workplace::LoadEvents() {
    if (IsClient()) return;
    const EventList& events = needs_.store.Events();
    needs_.lists.BeginBulkLoad();
    for (EventSequence at = events.Next(0); at != 0; at = events.Next(at))
        needs_.lists.RemoveAlarmRow(*events.Find(at));
    needs_.lists.EndBulkLoad();
    needs_.store.Clear();
    needs_.store.LoadEvents();
}

void Workplace::UsePrinterFont(const PrinterSettings& look) {
    printerSettings_ = look;
    Settings& files = needs_.foundation.Files();
    files.WriteIni("General", "Printer.FontName", look.FontName);
    files.WriteIni("General", "Printer.FontSize", std::to_string(look.FontSize));
    files.WriteIni("General", "Printer.FontBold", look.FontBold ? "1" : "0");
    files.WriteIni("General", "Printer.FontItalic", look.FontItalic ? "1" : "0");
}

bool Workplace::SendToDispatcher(const Text& line) {
    if (ClientReplica* server = needs_.network.Client()) {
        server->RequestTorvexLine(line);
        return !Rights().isConnectionLost;
    }
    return needs_.torvex.Send(line);
}

void Workplace::SendLogin(const Text& userName, const Text& password) {
    if (ClientReplica* server = needs_.network.Client()) server->RequestLogin({userName, password});
}

void Workplace::Logout() {
    if (ClientReplica* server = needs_.network.Client()) server->RequestLogout();
}

void Workplace::ListSettings() {
    inForce_.Add(NetworkSettingRows());
    inForce_.Add(EngineSettingRows());
    inForce_.Add(StoreSettingRows());
    inForce_.Add(IdleSettingRows());
    inForce_.Add(TranslationSettingRows());
    inForce_.Add(IntakeSettingRows());
    inForce_.Add(DispatchSettingRows());
    inForce_.Add(DeskSettingRows());
    inForce_.Add(TorvexSettingRows());
    inForce_.Add(OutputSettingRows());
    inForce_.Add(ComCallSettingRows());
    inForce_.Add(ViewStateRows());
    inForce_.Add(ConsoleSettingRows());
    inForce_.Add(CommentSettingRows());
    inForce_.Add(PictureSettingRows());
    inForce_.Add(PrinterSettingRows());
    inForce_.Add(AlarmPageSettingRows());
}

// --- What happens at the operator's place

void Workplace::KeepAsLatest(const cAlarm& alarm) {
    rate_.Note(needs_.foundation.Platform().clock.MonotonicMs());
    main_.KeepAsLatest(alarm);
}

void Workplace::ViewComment(const cAlarm& alarm) {
    windows_.OpenAlarmSheet(alarm.m_FilePointer, OpenedBy::Itself);
}

void Workplace::ViewMap(const cAlarm& alarm) {
    windows_.OpenMap(alarm.m_TranslatedMapName, alarm.m_FilePointer, OpenedBy::Itself);
}

void Workplace::ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) {
    windows_.ShowPicture(alarm.m_FilePointer, caption, isFollowedBySpeech);
}

void Workplace::Beep() {
    if (screen_) screen_->Beep();
}

void Workplace::Print(const PrintDocument& document) {
    if (screen_) screen_->Printer().Print(document);
}

void Workplace::Preview(const PrintDocument& document) {
    if (screen_) screen_->Printer().Preview(document);
}

// --- A client

void Workplace::ShowLinkState(LinkState state) {
    reconnect_.ShowLinkState(state);
    main_.SurroundingsChanged();
}

void Workplace::ShowUser(const ClientUser& user) {
    rights_.level = user.level;
    fullName_ = user.fullName;
    if (user.level < 1) windows_.CloseAll();
    main_.SurroundingsChanged();
}

void Workplace::AskForLogin() {
    login_.Open(OpenedBy::Itself);
}

void Workplace::PresentNewEvent(cAlarm& alarm) {
    needs_.dispatcher.PresentAtDesk(alarm);
}

void Workplace::EndProgram(const Text& message) {
    if (!message.empty()) needs_.foundation.Platform().dialogs.ShowMessage(message);
    needs_.endOnFailure();
}

}  // namespace nordkeep
