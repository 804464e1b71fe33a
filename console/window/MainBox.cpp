#include "console/window/MainBox.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

bool IsLink(TextView url) {
    const Text upper = UpperCase(url.substr(0, 8));
    return upper.starts_with("HTTP://") || upper.starts_with("HTTPS://");
}

}  // namespace

MainBox::MainBox(const Needs& needs, const ViewState& view)
    : needs_(needs),
      objects_({needs.translations, needs.captions, needs.clock, needs.surroundings().rights.IsClient()}),
      types_(needs.translations, needs.captions),
      dataCodes_(needs.captions) {
    inputs_.checked = view;
    needs_.sysLog.SetCaptions(&needs_.captions);
    needs_.sysLog.SetLimit(needs_.settings.LogViewSize);
    needs_.debug.List().SetLimit(needs_.settings.DebugViewSize);
    needs_.debug.SetHex(view.Check_Debug_HexCode);
    needs_.debug.SetShowLastRow(view.Check_Debug_ShowLastRow);
    needs_.commands.SetGuard([this] {
        ReadSurroundings();
        return inputs_.rights.MayChange();
    });
    Recalc();
}

MainBox::~MainBox() {
    needs_.commands.SetGuard([] { return false; });
}

// --- Lists

AlarmRows* MainBox::AlarmList(Tab tab) {
    return tab == Tab::Unacked ? &needs_.lists.Unacked()
           : tab == Tab::Acked ? &needs_.lists.Acked()
                               : nullptr;
}

RowModel* MainBox::ListOf(Tab tab) {
    switch (tab) {
        case Tab::Unacked:
        case Tab::Acked:
            return AlarmList(tab);
        case Tab::SysLog:
            return &needs_.sysLog;
        case Tab::Debug:
            return &needs_.debug.List();
        case Tab::IdCodes:
            return &objects_;
        case Tab::Types:
            return &types_;
        case Tab::DataCodes:
            return &dataCodes_;
    }
    return nullptr;
}

// --- Pages and state

void MainBox::ShowTab(Tab tab) {
    inputs_.tab = tab;
    if (IsAlarmTab(tab)) TakeCurrentAlarm();
    if (tab == Tab::DataCodes) RenewDataCodes();
    Recalc();
}

void MainBox::ReadSurroundings() {
    around_ = needs_.surroundings();
    inputs_.rights = around_.rights;
    inputs_.isSounding = around_.isSounding;
    inputs_.hasGoogolPort = around_.hasGoogolPort;
    inputs_.isSimulation = around_.isSimulation;
}

bool MainBox::HasSelection(Tab tab) const {
    RowModel* list = const_cast<MainBox*>(this)->ListOf(tab);
    const AlarmRows* alarms = const_cast<MainBox*>(this)->AlarmList(tab);
    return std::ranges::any_of(SelectionOf(tab).keys, [&](const Text& key) {
        return alarms ? alarms->Holds(LeadingInt32(key)) : list->RowOf(key) >= 0;
    });
}

bool MainBox::HasMap() const {
    if (inputs_.tab == Tab::IdCodes) {
        const cIDCode* object = objects_.FindObject(CurrentKey(Tab::IdCodes));
        return object && !object->m_MapName.empty();
    }
    const cAlarm* alarm = AlarmOfMap();
    return alarm && !alarm->m_TranslatedMapName.empty();
}

// Until an alarm has been clicked, the latest one is meant.
const cAlarm* MainBox::AlarmOfMap() const {
    if (const cAlarm* alarm = CurrentAlarm()) return alarm;
    const cAlarm* latest = latestAlarm_ != 0 ? needs_.store.FindAlarmByKey(latestAlarm_) : nullptr;
    return latest && latest->m_Status != kStatusRemoved ? latest : nullptr;
}

void MainBox::Recalc() {
    ReadSurroundings();
    tabs_ = CalcVisibility(inputs_.checked,
                           {needs_.settings.FloatingSysLogWindow, needs_.settings.FloatingDebugWindow},
                           inputs_.tab);
    inputs_.tab = tabs_.current;
    inputs_.unackedRows = needs_.lists.UnackedCount();
    inputs_.isUnackedSelected = HasSelection(Tab::Unacked);
    inputs_.isAckedSelected = HasSelection(Tab::Acked);
    inputs_.hasCurrentAlarm = CurrentAlarm() != nullptr;
    inputs_.isSetSelected = !tree_.SelectedSet().empty();
    inputs_.isObjectSelected = HasSelection(Tab::IdCodes);
    inputs_.hasMap = HasMap();
    states_ = CalcCommands(inputs_);
    if (screen_) screen_->ShowState();
}

// --- Selection

void MainBox::Select(Tab tab, std::vector<Text> keys, Text current) {
    SelectionOf(tab) = {std::move(keys), std::move(current)};
    if (tab == inputs_.tab && IsAlarmTab(tab)) TakeCurrentAlarm();
    Recalc();
}

void MainBox::TakeCurrentAlarm() {
    const Text& key = CurrentKey(inputs_.tab);
    if (!key.empty() && HasSelection(inputs_.tab)) currentAlarm_ = LeadingInt32(key);
}

const cAlarm* MainBox::CurrentAlarm() const {
    const cAlarm* alarm = currentAlarm_ != 0 ? needs_.store.FindAlarmByKey(currentAlarm_) : nullptr;
    return alarm && alarm->m_Status != kStatusRemoved ? alarm : nullptr;
}

void MainBox::SetFilter(Tab tab, TextView words) {
    if (AlarmRows* list = AlarmList(tab)) list->SetFilter(words);
    Recalc();
}

std::vector<Text> MainBox::KeysInOrder(Tab tab) const {
    RowModel* list = const_cast<MainBox*>(this)->ListOf(tab);
    std::vector<std::pair<int, Text>> rows;
    for (const Text& key : Selected(tab)) {
        if (const int row = list->RowOf(key); row >= 0) rows.emplace_back(row, key);
    }
    std::ranges::sort(rows);
    std::vector<Text> keys;
    for (auto& [row, key] : rows) keys.push_back(std::move(key));
    return keys;
}

void MainBox::LaunchCommentOrMap(Tab tab) {
    const AlarmRows* list = AlarmList(tab);
    const std::vector<Text> keys = KeysInOrder(tab);
    if (!list || keys.size() != 1 || !MayShowPopup()) return;
    const cAlarm* alarm = needs_.store.FindAlarmByKey(LeadingInt32(keys.front()));
    if (!alarm) return;
    currentAlarm_ = alarm->m_FilePointer;
    if (list->Columns().doubleClickShowsMap && !alarm->m_TranslatedMapName.empty()) {
        return needs_.windows.OpenMap(alarm->m_TranslatedMapName, currentAlarm_, OpenedBy::Operator);
    }
    needs_.windows.OpenAlarmSheet(currentAlarm_, OpenedBy::Operator);
}

void MainBox::Activate(Tab tab) {
    if (IsAlarmTab(tab)) return LaunchCommentOrMap(tab);
    if (tab == Tab::IdCodes) Run(Command::ObjectComments);
}

// --- New alarms

void MainBox::OfferNewAlarm(const cAlarm& alarm) {
    if (alarm.m_Status == kStatusAcknowledged) return;
    const bool showsLast = inputs_.checked.AlwaysShowLastAlarm;
    const bool turnsTab = inputs_.checked.ShowTabAutomatic;
    const bool isFirst =
        !HasSelection(Tab::Unacked) && !pending_.isToSelect && !needs_.lists.Unacked().IsFiltered();
    const bool isToSelect = isFirst || (showsLast && turnsTab);
    // The row is there at the next tick.
    if (isToSelect || showsLast) {
        pending_ = {RowKey(alarm), isToSelect, isToSelect || showsLast};
    }
    if (turnsTab && inputs_.tab != Tab::Unacked) ShowTab(Tab::Unacked);
}

void MainBox::ShowWhatIsPending() {
    if (pending_.key.empty()) return;
    const PendingShow show = std::exchange(pending_, {});
    if (needs_.lists.Unacked().RowOf(show.key) < 0) return;
    if (show.isToSelect) {
        Select(Tab::Unacked, {show.key}, show.key);
        if (screen_) screen_->ShowSelection(Tab::Unacked);
    }
    if (show.isToReveal && screen_) screen_->Reveal(Tab::Unacked, show.key);
}

void MainBox::PopUp() {
    ShowTab(Tab::Unacked);
    if (screen_) screen_->PopUp();
}

// --- Texts

Text MainBox::AlarmInfo() {
    const cAlarm* alarm = CurrentAlarm();
    if (!alarm) return {};
    const Text key = RowKey(*alarm) + alarm->m_AlarmCodeToStore + alarm->m_ObjectInformation;
    if (key == infoOf_) return info_;
    const Text set = alarm->m_TranslationFile;
    const Text idCode = alarm->m_IdCode;
    const Text typeCode = alarm->m_TypeCode;
    // A client asks its server for no more than what it was told to show.
    const bool isClient = around_.rights.IsClient();
    Text text = alarm->m_AlarmCodeToStore;
    Text parts[2] = {alarm->m_ObjectInformation, {}};
    if (const Text path = ObjectInfoFile(set, idCode); !isClient && !path.empty()) {
        if (Text file = needs_.files.ReadTextFile(path); !file.empty()) parts[0] = std::move(file);
    }
    if (const Text path = CodeInfoFile(set, idCode, typeCode);
        needs_.settings.ViewTypeCodeInfo && !path.empty() && (!isClient || around_.mayAskServer)) {
        parts[1] = needs_.files.ReadTextFile(path);
    }
    for (const Text& part : parts) {
        if (!TrimBlanks(part).empty()) text.append("\r\n\r\n").append(part);
    }
    infoOf_ = key;
    return info_ = std::move(text);
}

Text MainBox::Link() const {
    const cAlarm* alarm = CurrentAlarm();
    return alarm && IsLink(alarm->m_URL) ? alarm->m_URL : Text();
}

Text MainBox::StatusLine(Tab tab) const {
    if (!IsAlarmTab(tab) || !needs_.settings.HasStatusLines()) return {};
    const Text& key = CurrentKey(tab);
    const cAlarm* alarm = key.empty() ? nullptr : needs_.store.FindAlarmByKey(LeadingInt32(key));
    if (!alarm || !HasSelection(tab)) return {};
    return Printable(needs_.cells.Build(
        tab == Tab::Unacked ? needs_.settings.UnackedStatusBarFormat : needs_.settings.AckedStatusBarFormat,
        *alarm));
}

StatusTexts MainBox::Status() const {
    return StatusTextsOf(needs_.captions, {.unacked = needs_.lists.UnackedCount(),
                                           .acked = needs_.lists.AckedCount(),
                                           .oldestUnhandled = needs_.lists.OldestUnhandled(),
                                           .now = needs_.clock.Now(),
                                           .rights = around_.rights,
                                           .fullName = around_.fullName});
}

std::vector<Banner> MainBox::Banners() const {
    const AlarmRows& unacked = needs_.lists.Unacked();
    return BannersOf(needs_.captions, {.isConnectionLost = around_.rights.isConnectionLost,
                                       .arePortsDisabled = around_.arePortsDisabled,
                                       .isFlood = around_.isFlood,
                                       .mutedPort = needs_.debug.MutedPort(),
                                       .mutedSeconds = needs_.debug.MutedSeconds(),
                                       .hiddenAlarms = unacked.IsFiltered() ? unacked.HiddenCount() : 0,
                                       .loadPercent = needs_.lists.LoadPercent()});
}

Text MainBox::Title() const {
    return TitleOf(needs_.captions, {around_.rights, around_.clients, around_.server, around_.fullName});
}

Tray MainBox::TrayIcon() const {
    const std::size_t count = needs_.lists.UnackedCount();
    if (around_.rights.isConnectionLost) return {TrayState::NoContact, 0};
    return {count > 0 ? TrayState::NewAlarms : TrayState::Idle, count};
}

ViewState MainBox::StateToSave() const {
    ViewState state = inputs_.checked;
    state.Check_Debug_HexCode = needs_.debug.IsHex();
    state.Check_Debug_ShowLastRow = needs_.debug.ShowsLastRow();
    return state;
}

// --- The tick

void MainBox::Tick(int elapsedMs) {
    needs_.lists.Flush();
    needs_.sysLog.Flush();
    needs_.debug.List().Flush();
    sinceGlyphsMs_ += elapsedMs;
    ShowChangedObjects();
    ShowWhatIsPending();
    if (areDataCodesToRead_ && inputs_.tab == Tab::DataCodes) RenewDataCodes();
    Recalc();
}

}  // namespace nordkeep
