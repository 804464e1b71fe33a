#include "app/Workplace.h"

#include "runtime/ObjectFiles.h"

namespace nordkeep {
namespace {

AlarmLists::Looks LooksOf(const Foundation& foundation, const Settings& files, const AlarmCells& cells,
                          const ConsoleSettings& settings) {
    return {.rows = {.cells = &cells,
                     .colors = LoadAlarmColors(files, foundation.Switches().noBackgroundColor),
                     .hasToolTips = settings.ViewAlarmToolTip},
            .unacked = LoadAlarmColumns(files, kUnackedSection),
            .acked = LoadAlarmColumns(files, kAckedSection)};
}

}  // namespace

Workplace::Workplace(const Needs& needs, PlaceRole role)
    : needs_(needs),
      role_(std::move(role)),
      captions_(needs.foundation.Texts()),
      printerSettings_(needs.settings.printer),
      cells_(needs.store, captions_, fileTexts_,
             {needs.settings.console.AlarmDateFormat, needs.settings.console.AlarmTimeFormat,
              needs.settings.console.ViewStatusAsNumber, &needs.foundation.Platform().clock}),
      sysLog_(captions_),
      debug_({.dataFolder = needs.foundation.DataFolder(),
              .clock = needs.foundation.Platform().clock,
              .captions = captions_,
              .log = needs.foundation.Log(),
              .lines = needs.lines}),
      printing_({.store = needs.store,
                 .captions = captions_,
                 .settings = printerSettings_,
                 .pageSettings = needs.settings.alarmPages,
                 .output = *this}),
      windows_(
          {.sheet = sheet_, .map = map_, .picture = picture_, .store = needs.store, .state = *role_.state}),
      commands_(CommandNeeds()),
      objectForms_(
          {.files = *role_.files, .programFolder = needs.foundation.ProgramFolder(), .captions = captions_}),
      sheet_(SheetNeeds()),
      map_({.pictures = *role_.maps,
            .captions = captions_,
            .loop = needs.foundation.Platform().loop,
            .store = needs.store,
            .defaultZoom = needs.settings.pictures.DefaultZoom}),
      picture_(needs.settings.pictures, needs.foundation.DataFolder(), needs.foundation.Platform().loop),
      login_(*role_.server),
      reconnect_({.language = needs.foundation.Texts(),
                  .captions = captions_,
                  .clock = needs.foundation.Platform().clock,
                  .loop = needs.foundation.Platform().loop,
                  .server = *role_.server,
                  .reconnectIntervalMs = needs.foundation.Network().NetworkReconnectInterval}),
      period_({.translations = needs.translations,
               .centre = *role_.centre,
               .captions = captions_,
               .clock = needs.foundation.Platform().clock,
               .state = *role_.state}),
      textFindings_(needs.foundation),
      editor_({.files = *role_.files,
               .dialogs = needs.foundation.Platform().dialogs,
               .captions = captions_,
               .state = *role_.state,
               .host = *role_.editorHost,
               .check = textFindings_}),
      lines_({.files = *role_.files,
              .dialogs = needs.foundation.Platform().dialogs,
              .captions = captions_,
              .state = *role_.state,
              .clock = needs.foundation.Platform().clock,
              .dataFolder = needs.foundation.DataFolder(),
              .control = *role_.lines}),
      editors_(EditorNeeds(), needs.foundation.Platform().dialogs, objectForms_),
      setup_({.files = needs.foundation.Files(),
              .centreFiles = *role_.files,
              .dialogs = needs.foundation.Platform().dialogs,
              .captions = captions_,
              .state = *role_.state,
              .host = *this,
              .sections = Sections(),
              .dataFolder = needs.foundation.DataFolder(),
              .programFolder = needs.foundation.ProgramFolder()}),
      shift_({.store = needs.store,
              .translations = needs.translations,
              .captions = captions_,
              .clock = needs.foundation.Platform().clock,
              .printerSettings = printerSettings_}),
      history_(HistoryNeeds()),
      report_(HistoryNeeds()),
      shiftBox_({.list = shift_,
                 .source = *role_.history,
                 .captions = captions_,
                 .clock = needs.foundation.Platform().clock,
                 .printer = *this}),
      card_(CardNeeds()),
      main_(MainNeeds(), needs.settings.view) {
    // The lists stand before the store, and their cells behind it.
    needs_.lists.Attach(LooksOf(needs.foundation, needs.foundation.Files(), cells_, needs.settings.console));
    needs_.foundation.Traffic().SetListener(
        [this](TextView bytes, TrafficDirection direction, TextView port) {
            debug_.NoteTraffic(bytes, direction, port);
        });
    needs_.desk.Attach(*this);
}

Workplace::~Workplace() {
    needs_.desk.Detach();
    needs_.foundation.Traffic().SetListener({});
}

AlarmCommands::Needs Workplace::CommandNeeds() {
    return {.store = needs_.store,
            .handling = needs_.handling,
            .dialogs = needs_.foundation.Platform().dialogs,
            .language = needs_.foundation.Texts(),
            .clock = needs_.foundation.Platform().clock,
            .state = *role_.state};
}

CommentBox::Needs Workplace::SheetNeeds() {
    const PlatformParts& platform = needs_.foundation.Platform();
    return {.store = needs_.store,
            .handling = needs_.handling,
            .translations = needs_.translations,
            .files = *role_.files,
            .dialogs = platform.dialogs,
            .language = needs_.foundation.Texts(),
            .captions = captions_,
            .settings = needs_.settings.comments,
            .printer = *this,
            .printerSettings = printerSettings_,
            .state = *role_.state,
            .centre = *role_.centre,
            .windows = windows_,
            .forms = objectForms_,
            .clock = platform.clock};
}

AlarmPage::Needs Workplace::AlarmNeeds() {
    return {.store = needs_.store,
            .lists = needs_.lists,
            .commands = commands_,
            .printing = printing_,
            .cells = cells_,
            .files = *role_.files,
            .captions = captions_,
            .settings = needs_.settings.console,
            .state = *role_.state,
            .windows = windows_,
            .readsObjectFiles = role_.readsObjectFiles};
}

ObjectPage::Needs Workplace::ObjectNeeds() {
    return {.translations = needs_.translations,
            .marks = needs_.marks,
            .translationSettings = needs_.settings.translation,
            .files = *role_.files,
            .captions = captions_,
            .clock = needs_.foundation.Platform().clock,
            .settings = needs_.settings.console,
            .state = *role_.state,
            .centre = *role_.centre,
            .windows = windows_,
            .period = period_,
            .editor = editor_,
            .editors = *this,
            .knowsCallers = role_.knowsCallers};
}

MainBox::Needs Workplace::MainNeeds() {
    return {.lists = needs_.lists,
            .sysLog = sysLog_,
            .debug = debug_,
            .captions = captions_,
            .clock = needs_.foundation.Platform().clock,
            .dialogs = needs_.foundation.Platform().dialogs,
            .settings = needs_.settings.console,
            .state = *role_.state,
            .centre = *role_.centre,
            .server = *role_.server,
            .sound = *this,
            .end = needs_.end,
            .login = login_,
            .simulation = needs_.simulation,
            .setup = setup_,
            .history = history_,
            .shift = shiftBox_,
            .card = card_,
            .loop = needs_.foundation.Platform().loop,
            .lines = *role_.lines,
            .alarms = AlarmNeeds(),
            .objects = ObjectNeeds()};
}

HistoryBox::Needs Workplace::HistoryNeeds() {
    return {.source = *role_.history,
            .captions = captions_,
            .clock = needs_.foundation.Platform().clock,
            .printer = *this,
            .printerSettings = printerSettings_};
}

CardBox::Needs Workplace::CardNeeds() {
    return {.translations = needs_.translations,
            .store = needs_.store,
            .files = *role_.files,
            .captions = captions_,
            .clock = needs_.foundation.Platform().clock,
            .state = *role_.state,
            .centre = *role_.centre,
            .windows = windows_,
            .period = period_,
            .history = history_,
            .source = *role_.history};
}

PlaceEditors::Needs Workplace::EditorNeeds() {
    return {.foundation = needs_.foundation,
            .captions = captions_,
            .state = *role_.state,
            .files = *role_.files,
            .maps = *role_.maps,
            .host = *role_.editorHost,
            .editor = editor_,
            .setEditors = *this,
            .translations = needs_.translations,
            .store = needs_.store,
            .outputs = needs_.outputs,
            .torvex = needs_.torvex,
            .intake = needs_.intake,
            .dispatcher = needs_.dispatcher};
}

std::vector<SetupSection*> Workplace::Sections() {
    std::vector<SetupSection*> sections = {&lines_, &editors_.Sets()};
    for (RowsBox* rows : editors_.All()) sections.push_back(rows);
    return sections;
}

void Workplace::EditObjects(const Text& set, const Text& idCode) {
    setup_.OpenAt(editors_.Objects());
    editors_.Objects().ShowRow(set, idCode);
}

void Workplace::EditTypes(const Text& set) {
    setup_.OpenAt(editors_.Types());
    editors_.Types().ShowRow(set, {});
}

void Workplace::EditInformation(const Text& set, const Text& idCode, const Text& name) {
    const ConsoleSettings& settings = needs_.settings.console;
    const Text path = InformationFile(set, idCode);
    if (path.empty()) return;
    if (settings.UseDynamicFormForObjectInfo) return editors_.ObjectForm().Open(set, idCode, name);
    editor_.Open({.path = path, .title = path, .program = settings.EditApp});
}

void Workplace::FirstShown() {
    if (role_.asksForLogin) AskForLogin();
    // A fresh installation receives nothing until a line has been made.
    if (role_.hasLines && role_.lines->Lines().empty()) setup_.Open();
}

Text Workplace::WrongInWords() const {
    Text words;
    for (const Condition& condition : main_.Wrong().Rows()) {
        if (condition.weight == ConditionWeight::Note) continue;
        words.append(words.empty() ? "" : ". ").append(Printable(condition.sentence));
    }
    return words;
}

void Workplace::Tick(int elapsedMs) {
    debug_.Tick(elapsedMs);
    windows_.Tick();
    main_.Tick(elapsedMs);
    needs_.paper.Tick(elapsedMs);
    const cAlarm* current = main_.Alarms().Current();
    map_.NoteCurrent(current ? current->m_FilePointer : 0);
    history_.Tick();
    report_.Tick();
    BeepInstead(elapsedMs);
}

// What cannot be played is at least told by the machine's own beep.
void Workplace::BeepInstead(int elapsedMs) {
    constexpr int kBeepMs = 2000;
    const bool isMute = main_.Wrong().Has(ConditionKind::SoundDead) && needs_.outputs.Sound().IsSounding();
    sinceBeepMs_ = isMute ? sinceBeepMs_ + elapsedMs : kBeepMs;
    if (!isMute || sinceBeepMs_ < kBeepMs) return;
    sinceBeepMs_ = 0;
    screen_->Beep();
}

void Workplace::Close() {
    windows_.CloseAll();
    login_.Close();
    period_.Close();
    card_.Close();
    main_.Find().Close();
    setup_.Drop();
    screen_->PrepareForEnd();
}

// --- The set-up

void Workplace::NoteSettings(const Text& what) {
    role_.editorHost->NoteSaved(what);
    RenewSettings();
}

void Workplace::RenewSettings() {
    needs_.live.Renew();
    const CentreSettings& settings = needs_.settings;
    printerSettings_ = settings.printer;
    needs_.outputs.Sound().UseSound(needs_.outputs.SoundOfSettings());
    needs_.lists.RenewColors(
        LoadAlarmColors(needs_.foundation.Files(), needs_.foundation.Switches().noBackgroundColor),
        settings.console.ViewAlarmToolTip);
    main_.TakeState(settings.view);
}

bool Workplace::PlaySound(const Text& file, const Text& device) {
    // An alarm that sounds is not to be cut off by a trial.
    if (file.empty() || needs_.outputs.Sound().IsSounding()) return false;
    SoundDevice& player = needs_.foundation.Platform().sound;
    player.SetOutput(device);
    const bool isStarted = player.Play(needs_.foundation.DataFolder().ResolveSetting(file));
    player.SetOutput(needs_.settings.outputs.AlarmSoundDevice);
    return isStarted;
}

void Workplace::RingSound() {
    const DeskSettings& desk = needs_.settings.desk;
    if (desk.AlarmSound <= 0) return;
    if (desk.AlarmSoundFile.empty()) return screen_->Beep();
    constexpr long kMostUrgent = 1;
    needs_.outputs.PlaySound(SoundRequest::Repeat, kMostUrgent);
}

std::vector<LanguageChoice> Workplace::Languages() {
    return ListLanguages(needs_.foundation.ProgramFolder());
}

// --- What happens at the operator's place

void Workplace::KeepAsLatest(const cAlarm& alarm) {
    role_.state->NoteAlarm();
    main_.Alarms().KeepAsLatest(alarm);
}

void Workplace::AlarmEnded(std::int32_t filePointer) {
    windows_.AlarmEnded(filePointer);
    main_.Alarms().AlarmEnded(filePointer);
}

void Workplace::ViewComment(const cAlarm& alarm) {
    windows_.OpenAlarmSheet(alarm.m_FilePointer, OpenedBy::Itself);
    login_.Raise();
}

void Workplace::ViewMap(const cAlarm& alarm) {
    windows_.OpenMap(alarm.m_TranslatedMapName, alarm.m_FilePointer, OpenedBy::Itself);
    login_.Raise();
}

void Workplace::ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) {
    windows_.ShowPicture(alarm.m_FilePointer, caption, isFollowedBySpeech);
}

// --- A client

void Workplace::ShowLinkState(LinkState state) {
    reconnect_.ShowLinkState(state);
    main_.SurroundingsChanged();
}

void Workplace::ShowUser(const ClientUser& user) {
    role_.state->SetUser(user);
    if (user.level < 1) windows_.CloseAll();
    main_.SurroundingsChanged();
    login_.Answer(user.level > 0 || !user.fullName.empty());
}

// Keys that somebody is typing for a sheet are not taken away.
void Workplace::AskForLogin() {
    login_.Open(sheet_.HasTyped() ? OpenedBy::Itself : OpenedBy::Operator);
}

void Workplace::EndProgram(const Text& message) {
    if (!message.empty()) needs_.foundation.Platform().dialogs.ShowMessage(message);
    needs_.end.EndOnFailure();
}

}  // namespace nordkeep
