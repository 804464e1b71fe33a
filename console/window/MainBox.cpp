#include "console/window/MainBox.h"

#include "console/window/CommandTargets.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextEndProgram = 3358;
constexpr int kTextEndClient = 3359;

}  // namespace

MainBox::MainBox(const Needs& needs, const ViewState& checked)
    : needs_(needs), alarms_(needs.alarms, *this), objects_(needs.objects, *this) {
    inputs_.checked = checked;
    needs_.sysLog.SetLimit(needs_.settings.LogViewSize);
    needs_.debug.List().SetLimit(needs_.settings.DebugViewSize);
    needs_.debug.SetHex(checked.Check_Debug_HexCode);
    needs_.debug.SetShowLastRow(checked.Check_Debug_ShowLastRow);
    Recalc();
}

// --- Pages

RowModel& MainBox::ListOf(Tab tab) {
    switch (tab) {
        case Tab::Unacked:
        case Tab::Acked:
            break;
        case Tab::SysLog:
            return needs_.sysLog;
        case Tab::Debug:
            return needs_.debug.List();
        case Tab::IdCodes:
            return objects_.Objects();
        case Tab::Types:
            return objects_.Types();
        case Tab::DataCodes:
            return objects_.DataCodes();
    }
    return alarms_.ListOf(tab);
}

void MainBox::ShowTab(Tab tab) {
    inputs_.tab = tab;
    if (IsAlarmTab(tab)) alarms_.TurnTo(tab);
    objects_.TurnTo(tab);
    Recalc();
}

void MainBox::Select(Tab tab, RowSelection selection) {
    if (IsAlarmTab(tab)) return alarms_.Select(tab, std::move(selection));
    if (tab == Tab::IdCodes) objects_.Select(std::move(selection));
}

const RowSelection& MainBox::SelectionOf(Tab tab) const {
    static const RowSelection kNothing;
    if (IsAlarmTab(tab)) return alarms_.SelectionOf(tab);
    return tab == Tab::IdCodes ? objects_.Selection() : kNothing;
}

void MainBox::Activate(Tab tab) {
    if (IsAlarmTab(tab)) return alarms_.Activate(tab);
    if (tab == Tab::IdCodes) Run(Command::ObjectComments);
}

// --- State and commands

CommandInputs MainBox::NewInputs() const {
    const bool isObjectTab = tabs_.current == Tab::IdCodes;
    return {.rights = needs_.state.Rights(),
            .checked = inputs_.checked,
            .tab = tabs_.current,
            .unackedRows = needs_.lists.UnackedCount(),
            .isUnackedSelected = alarms_.IsAnySelected(Tab::Unacked),
            .isAckedSelected = alarms_.IsAnySelected(Tab::Acked),
            .hasCurrentAlarm = alarms_.Current() != nullptr,
            .hasMap = isObjectTab ? objects_.HasMap() : alarms_.HasMap(),
            .isSetSelected = objects_.IsSetSelected(),
            .isObjectSelected = objects_.IsAnySelected(),
            .isSounding = facts_.isSounding,
            .hasGoogolPort = facts_.hasGoogolPort,
            .isSimulation = facts_.isSimulation};
}

void MainBox::Recalc() {
    facts_ = needs_.state.Facts();
    tabs_ = CalcVisibility(inputs_.checked,
                           {needs_.settings.FloatingSysLogWindow, needs_.settings.FloatingDebugWindow},
                           inputs_.tab);
    inputs_ = NewInputs();
    states_ = CalcCommands(inputs_);
    view_->ShowState();
}

void MainBox::Run(Command command, int item) {
    Recalc();
    if (!StateOf(command).isEnabled) return;
    RunCommand(command,
               {.window = *this,
                .alarms = alarms_,
                .objects = objects_,
                .view = *view_,
                .centre = needs_.centre,
                .server = needs_.server,
                .sound = needs_.sound,
                .login = needs_.login,
                .simulation = needs_.simulation,
                .setup = needs_.setup},
               item);
    alarms_.ForgetInfo();
    Recalc();
}

void MainBox::Toggle(bool ViewState::*item) {
    inputs_.checked.*item = !(inputs_.checked.*item);
}

void MainBox::TakeState(const ViewState& checked) {
    inputs_.checked = checked;
    needs_.debug.SetHex(checked.Check_Debug_HexCode);
    needs_.debug.SetShowLastRow(checked.Check_Debug_ShowLastRow);
    Recalc();
}

void MainBox::AskForEnd() {
    const Text question =
        needs_.captions(needs_.state.Rights().IsClient() ? kTextEndClient : kTextEndProgram);
    if (needs_.dialogs.AskYesNo(question)) needs_.end.EndProgram();
}

ViewState MainBox::StateToSave() const {
    ViewState state = inputs_.checked;
    state.Check_Debug_HexCode = needs_.debug.IsHex();
    state.Check_Debug_ShowLastRow = needs_.debug.ShowsLastRow();
    return state;
}

void MainBox::PopUp() {
    ShowTab(Tab::Unacked);
    view_->PopUp();
}

void MainBox::Tick(int elapsedMs) {
    needs_.lists.Flush();
    needs_.sysLog.Flush();
    needs_.debug.List().Flush();
    objects_.Tick(elapsedMs);
    alarms_.ShowWhatIsPending();
    Recalc();
}

// --- Texts

StatusTexts MainBox::Status() const {
    return StatusTextsOf(needs_.captions, {.unacked = needs_.lists.UnackedCount(),
                                           .acked = needs_.lists.AckedCount(),
                                           .oldestUnhandled = needs_.lists.OldestUnhandled(),
                                           .now = needs_.clock.Now(),
                                           .rights = inputs_.rights,
                                           .fullName = facts_.fullName});
}

std::vector<Banner> MainBox::Banners() const {
    const AlarmRows& unacked = alarms_.ListOf(Tab::Unacked);
    return BannersOf(needs_.captions, {.isConnectionLost = inputs_.rights.isConnectionLost,
                                       .arePortsDisabled = facts_.arePortsDisabled,
                                       .isNoPortOpen = facts_.isNoPortOpen,
                                       .isFlood = needs_.state.IsFlood(),
                                       .mutedPort = needs_.debug.MutedPort(),
                                       .mutedSeconds = needs_.debug.MutedSeconds(),
                                       .heldPorts = facts_.heldPorts,
                                       .hiddenAlarms = unacked.IsFiltered() ? unacked.HiddenCount() : 0,
                                       .loadPercent = needs_.lists.LoadPercent(),
                                       .findings = facts_.findings,
                                       .areErrors = facts_.areErrors,
                                       .findingsIn = facts_.findingsIn});
}

Text MainBox::Title() const {
    return TitleOf(needs_.captions, {inputs_.rights, facts_.clients, facts_.server, facts_.fullName});
}

Tray MainBox::TrayIcon() const {
    const std::size_t count = needs_.lists.UnackedCount();
    if (inputs_.rights.isConnectionLost) return {TrayState::NoContact, 0};
    return {count > 0 ? TrayState::NewAlarms : TrayState::Idle, count};
}

}  // namespace nordkeep
