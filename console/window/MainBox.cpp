#include "console/window/MainBox.h"

#include "console/window/CommandTargets.h"
#include "runtime/Fields.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextEndProgram = 3358;
constexpr int kTextEndClient = 3359;
constexpr int kTextFilterHides = 5022;
constexpr int kCaptionNoneNew = 3649;
constexpr int kCaptionNoneOld = 3650;
constexpr int kCaptionChooseSet = 5850;
constexpr int kCaptionNoneInSet = 5851;

}  // namespace

MainBox::MainBox(const Needs& needs, const ViewState& checked)
    : needs_(needs),
      alarms_(needs.alarms, *this),
      objects_(needs.objects, *this),
      lines_(needs.lines, needs.captions, needs.clock),
      find_({.translations = needs.objects.translations,
             .store = needs.alarms.store,
             .captions = needs.captions,
             .clock = needs.clock,
             .loop = needs.loop},
            *this),
      conditions_(needs.captions) {
    inputs_.checked = checked;
    needs_.sysLog.SetLimit(needs_.settings.LogViewSize);
    needs_.debug.List().SetLimit(needs_.settings.DebugViewSize);
    needs_.debug.SetHex(checked.Check_Debug_HexCode);
    needs_.debug.SetShowLastRow(checked.Check_Debug_ShowLastRow);
    // As Recalc, but for the conditions: what tells of them may be built behind this, and the first tick
    // asks.
    facts_ = needs_.state.Facts();
    tabs_ = CalcVisibility(
        checked, {needs_.settings.FloatingSysLogWindow, needs_.settings.FloatingDebugWindow}, inputs_.tab);
    inputs_ = NewInputs();
    states_ = CalcCommands(inputs_);
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
        case Tab::Lines:
            return lines_.Rows();
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
    if (tab == Tab::IdCodes) return objects_.Select(std::move(selection));
    if (tab != Tab::Lines) return;
    lines_.Select(std::move(selection));
    Recalc();
}

const RowSelection& MainBox::SelectionOf(Tab tab) const {
    static const RowSelection kNothing;
    if (IsAlarmTab(tab)) return alarms_.SelectionOf(tab);
    if (tab == Tab::Lines) return lines_.Selection();
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
            .isLineSelected = lines_.IsAnySelected(),
            .isLineHeld = lines_.IsHeld(),
            .canUndo = !alarms_.UndoText().empty(),
            .hasNews = alarms_.HasNews(),
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
    RenewConditions();
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
                .lines = lines_,
                .view = *view_,
                .centre = needs_.centre,
                .server = needs_.server,
                .sound = needs_.sound,
                .login = needs_.login,
                .simulation = needs_.simulation,
                .setup = needs_.setup,
                .history = needs_.history,
                .shift = needs_.shift},
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

// In a flood every event comes here; what has changed besides the page is shown with the next tick.
void MainBox::PopUp() {
    if (inputs_.tab != Tab::Unacked) ShowTab(Tab::Unacked);
    view_->PopUp();
}

void MainBox::Tick(int elapsedMs) {
    needs_.lists.Flush();
    needs_.sysLog.Flush();
    needs_.debug.List().Flush();
    objects_.Tick(elapsedMs);
    if (lines_.Tick(elapsedMs)) objects_.Tree().ShowLines(lines_.Lines());
    alarms_.ShowWhatIsPending();
    needs_.card.Tick();
    CountUntouched(elapsedMs);
    Recalc();
}

// A filter may hide the row, and somebody has just asked for it.
void MainBox::ShowAlarm(std::int32_t filePointer) {
    const Text key = std::to_string(filePointer) + "K";
    needs_.lists.Flush();
    if (alarms_.ListOf(Tab::Unacked).RowOf(key) < 0) view_->ClearFilter(Tab::Unacked);
    ShowTab(Tab::Unacked);
    if (alarms_.ListOf(Tab::Unacked).RowOf(key) < 0) return;
    Select(Tab::Unacked, {{key}, key});
    view_->ShowSelection(Tab::Unacked);
    view_->Reveal(Tab::Unacked, key);
}

// --- Texts

StatusTexts MainBox::Status() const {
    return StatusTextsOf(needs_.captions, {.unacked = needs_.lists.UnackedCount(),
                                           .byPriority = needs_.lists.Unacked().CountsByPriority(),
                                           .acked = needs_.lists.AckedCount(),
                                           .inService = conditions_.CountOf(ConditionKind::InService),
                                           .oldestUnhandled = needs_.lists.OldestUnhandled(),
                                           .now = needs_.clock.Now(),
                                           .rights = inputs_.rights,
                                           .fullName = facts_.fullName});
}

Text MainBox::EmptyText(Tab tab) const {
    if (!IsAlarmTab(tab)) {
        return needs_.captions(objects_.IsSetSelected() ? kCaptionNoneInSet : kCaptionChooseSet);
    }
    if (alarms_.ListOf(tab).IsFiltered()) return needs_.captions(kTextFilterHides);
    for (const Condition& condition : conditions_.Rows()) {
        if (condition.hidesAlarms) return condition.sentence;
    }
    return needs_.captions(tab == Tab::Acked ? kCaptionNoneOld : kCaptionNoneNew);
}

// --- What is wrong

// The window knows best what it does not show.
void MainBox::RenewConditions() {
    using enum ConditionKind;
    std::vector<ConditionFact> facts = needs_.state.Conditions();
    const AlarmRows& unacked = alarms_.ListOf(Tab::Unacked);
    if (inputs_.rights.isConnectionLost) facts.push_back({.kind = ContactLost});
    if (needs_.state.IsFlood()) facts.push_back({.kind = Flood});
    if (unacked.IsFiltered() && unacked.HiddenCount() > 0) {
        facts.push_back({.kind = Hidden, .count = static_cast<int>(unacked.HiddenCount())});
    }
    if (const int percent = needs_.lists.LoadPercent(); percent < 100) {
        facts.push_back({.kind = Loading, .count = percent});
    }
    if (untouched_ > 0) facts.push_back({.kind = Untouched, .count = untouched_});
    if (conditions_.Renew(std::move(facts), needs_.clock.Now())) needs_.sound.RingSound();
}

// One more rings again: the first time nobody came.
void MainBox::CountUntouched(int elapsedMs) {
    constexpr int kPeriodMs = 1000;
    sinceCountMs_ += elapsedMs;
    if (sinceCountMs_ < kPeriodMs) return;
    sinceCountMs_ = 0;
    AlarmLists::Patience patience{};
    for (std::size_t place = 0; place < patience.size(); ++place) {
        patience[place] = LeadingInt32(GetField(needs_.settings.EscalationTimes, place, ","));
    }
    const int count = needs_.lists.CountUntouched(needs_.clock.Now(), patience);
    if (count > untouched_) needs_.sound.RingSound();
    untouched_ = count;
}

void MainBox::OpenCondition(const Condition& condition) {
    switch (condition.opens) {
        case ConditionPage::Lines: {
            ShowTab(Tab::Lines);
            const Text key = lines_.KeyOf(condition.name);
            if (key.empty()) return;
            Select(Tab::Lines, {{key}, key});
            view_->ShowSelection(Tab::Lines);
            return view_->Reveal(Tab::Lines, key);
        }
        case ConditionPage::FaultList:
            return view_->ShowFindings();
        case ConditionPage::Filter:
            return view_->ClearFilter(Tab::Unacked);
        case ConditionPage::NewAlarms:
            return ShowTab(Tab::Unacked);
        case ConditionPage::Log:
            if (!inputs_.checked.ShowSysLog) Toggle(&ViewState::ShowSysLog);
            return ShowTab(Tab::SysLog);
        case ConditionPage::Service:
            return needs_.shift.Open();
        case ConditionPage::LineSetup:
            Run(Command::FileSetup);
            // The lines come first.
            return needs_.setup.IsOpen() ? needs_.setup.ShowPage(0) : void();
        case ConditionPage::None:
            break;
    }
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
