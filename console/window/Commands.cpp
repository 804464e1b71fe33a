#include "console/lists/SharedCaptions.h"
#include "console/window/CommandTargets.h"

#include <algorithm>

namespace nordkeep {
namespace {

using C = Command;
using I = CommandInputs;
using T = CommandTargets;
using V = ViewState;

/// What who works here must be allowed to do.
enum class Right { None, Operate, Edit, Change };

bool Always(const I&) {
    return true;
}
bool IsNewSelected(const I& in) {
    return in.tab == Tab::Unacked && in.isUnackedSelected;
}
bool IsOldSelected(const I& in) {
    return in.tab == Tab::Acked && in.isAckedSelected;
}
bool IsAlarmSelected(const I& in) {
    return IsNewSelected(in) || IsOldSelected(in);
}
bool IsObjectShown(const I& in) {
    return in.tab == Tab::IdCodes && in.isObjectSelected;
}
bool HasSomethingToComment(const I& in) {
    return (IsAlarmSelected(in) && in.hasCurrentAlarm) || IsObjectShown(in);
}
bool IsClient(const I& in) {
    return in.rights.IsClient();
}
bool IsAlarmList(const I& in) {
    return in.tab == Tab::Unacked || in.tab == Tab::Acked;
}

bool IsOwnCopy(const I& in) {
    return !in.rights.IsClient();
}
bool IsSimulation(const I& in) {
    return in.isSimulation;
}
bool HasSet(const I& in) {
    return in.isSetSelected;
}
bool HasMap(const I& in) {
    return in.hasMap;
}

template <bool V::*item>
void Toggle(const T& t, int) {
    t.window.Toggle(item);
}
/// Both go on unless both are on.
void ToggleShowLast(const T& t, int) {
    const V& checked = t.window.Checked();
    const bool isOn = checked.AlwaysShowLastAlarm && checked.ShowTabAutomatic;
    if (checked.AlwaysShowLastAlarm == isOn) t.window.Toggle(&V::AlwaysShowLastAlarm);
    if (checked.ShowTabAutomatic == isOn) t.window.Toggle(&V::ShowTabAutomatic);
}
void SilenceSound(const T& t, int) {
    t.sound.SilenceSound();
}
void EndAll(const T& t, int) {
    t.alarms.EndAll();
}
void EndSelected(const T& t, int) {
    t.alarms.EndSelected();
}
void Print(const T& t, int) {
    t.alarms.Print();
}
void OpenSheet(const T& t, int) {
    t.window.CurrentTab() == Tab::IdCodes ? t.objects.OpenSheet() : t.alarms.OpenSheet();
}
void OpenMap(const T& t, int) {
    t.window.CurrentTab() == Tab::IdCodes ? t.objects.OpenMapOfSelected() : t.alarms.OpenMap();
}
void EditIdCodes(const T& t, int) {
    t.objects.EditObjects();
}
void AskServicePeriod(const T& t, int) {
    t.objects.AskServicePeriod();
}
void Reload(const T& t, int) {
    t.centre.Reload();
}

struct Rule {
    Command command;
    int caption;
    const char* keys;
    Right right;
    bool (*isEnabled)(const I&);
    void (*act)(const T&, int item);
    bool (*isVisible)(const I&) = &Always;
    bool V::*checked = nullptr;
};

// In the order of the commands.
constexpr Rule kRules[] = {
    {C::CloseAll, 3150, "Ctrl+Shift+E", Right::Change,
     [](const I& in) { return in.tab == Tab::Unacked && in.unackedRows > 0; }, &EndAll},
    {C::CloseAlarm, 3151, "Ctrl+E", Right::Change, &IsNewSelected, &EndSelected},
    // A repeating sound can be silenced by anybody, from anywhere.
    {C::SoundStop, 3152, "", Right::None, [](const I& in) { return in.isSounding; }, &SilenceSound},
    {C::ShowLast, 3153, "", Right::Operate, &Always, &ToggleShowLast},
    {C::PrintSelected, 3154, "", Right::Operate, &IsAlarmSelected, &Print},
    {C::ShowComments, 3155, "F2", Right::Operate, &HasSomethingToComment, &OpenSheet},
    {C::EditIDCodes, 3156, "", Right::Edit,
     [](const I& in) { return in.isSetSelected && in.tab == Tab::IdCodes; }, &EditIdCodes},
    {C::EditTypes, 3157, "", Right::Edit,
     [](const I& in) { return in.isSetSelected && in.tab == Tab::Types; },
     [](const T& t, int) { t.objects.EditTypes(); }},
    {C::SetService, 3158, "", Right::Change, &IsObjectShown, &AskServicePeriod},
    {C::Update, 3159, "F5", Right::Operate, &Always, &Reload},
    {C::ShowMap, 3160, "F4", Right::Operate, &HasMap, &OpenMap},
    {C::FileLogin, 3030, "", Right::None, [](const I& in) { return in.rights.level <= 0; },
     [](const T& t, int) { t.login.Open(OpenedBy::Operator); }, &IsClient},
    {C::FileLogout, 3031, "", Right::None, [](const I& in) { return in.rights.level > 0; },
     [](const T& t, int) { t.server.Logout(); }, &IsClient},
    {C::MenuAckAll, 3032, "", Right::Change, &Always, &EndAll},
    {C::FileSoundStop, 3033, "F8", Right::None, &Always, &SilenceSound},
    {C::MenuShowLast, 3034, "", Right::None, &Always, &Toggle<&V::AlwaysShowLastAlarm>, &Always,
     &V::AlwaysShowLastAlarm},
    {C::SetClock, 3035, "", Right::Operate, [](const I& in) { return in.hasGoogolPort; },
     [](const T& t, int) { t.centre.SetClocks(); }},
    {C::FilePrint, 3036, "Ctrl+P", Right::Operate, &IsAlarmList, &Print},
    {C::FileSetup, 3037, "", Right::Edit, &Always, [](const T& t, int) { t.setup.Open(); }},
    {C::Exit, 3038, "", Right::None, &Always, [](const T& t, int) { t.window.AskForEnd(); }},
    {C::SimAlarm, 3039, "", Right::None, &IsOwnCopy, [](const T& t, int) { t.simulation.Open(); },
     &IsSimulation},
    {C::Sim100Alarms, 3040, "", Right::None, &IsOwnCopy, [](const T& t, int) { t.simulation.RaiseHundred(); },
     &IsSimulation},
    {C::LoadEvents, 3041, "", Right::None, &IsOwnCopy, [](const T& t, int) { t.centre.LoadEvents(); },
     &IsSimulation},
    {C::ShowSysLog, 3042, "", Right::None, &Always, &Toggle<&V::ShowSysLog>, &Always, &V::ShowSysLog},
    {C::ShowDebug, 3043, "", Right::None, &Always, &Toggle<&V::ShowDebug>, &Always, &V::ShowDebug},
    {C::ShowIdCodes, 3044, "", Right::None, &Always, &Toggle<&V::ShowIdCodes>, &Always, &V::ShowIdCodes},
    {C::ShowTypes, 3045, "", Right::None, &Always, &Toggle<&V::ShowTypes>, &Always, &V::ShowTypes},
    {C::ShowDataCodes, 3046, "", Right::None, &Always, &Toggle<&V::ShowDataCodes>, &Always,
     &V::ShowDataCodes},
    {C::MapOfAlarm, 3160, "", Right::Operate, &HasMap, &OpenMap},
    {C::TabAutomatic, 3048, "", Right::None, &Always, &Toggle<&V::ShowTabAutomatic>, &Always,
     &V::ShowTabAutomatic},
    {C::MenuUpdate, 3049, "", Right::Operate, &Always, &Reload},
    {C::PrinterFont, 3050, "", Right::Edit, &Always, [](const T& t, int) { t.view.ChoosePrinterFont(); }},
    {C::SelectAll, 3051, "Ctrl+A", Right::None, &IsAlarmList,
     [](const T& t, int) { t.view.SelectAllRows(t.window.CurrentTab()); }},
    {C::ShiftHandover, 3764, "", Right::Operate, &Always, [](const T& t, int) { t.shift.Open(); }},
    {C::Keys, 3640, "F1", Right::None, &Always, [](const T& t, int) { t.view.ShowKeys(); }},
    {C::About, 3052, "", Right::None, &Always, [](const T& t, int) { t.view.ShowAbout(); }},
    {C::PopupComments, 3100, "", Right::Operate, &IsAlarmSelected, &OpenSheet},
    {C::PopupCopy, 3101, "Ctrl+C", Right::Operate, &IsAlarmSelected,
     [](const T& t, int) { t.view.PutOnClipboard(t.alarms.CopyText(t.window.CurrentTab())); }},
    {C::PopupPrint, 3102, "", Right::Operate, &IsAlarmSelected, &Print},
    {C::PopupClose, 3103, "", Right::Change, &IsNewSelected, &EndSelected},
    {C::PopupArchive, 3104, "", Right::Change, &IsOldSelected,
     [](const T& t, int) { t.alarms.ArchiveSelected(); }},
    {C::TranslationEdit, 3105, "", Right::Edit, &HasSet, &EditIdCodes},
    {C::ServiceInUse, 3107, "", Right::Change, &IsObjectShown,
     [](const T& t, int) { t.objects.SetService(InUse()); }},
    {C::ServicePeriod, 3108, "", Right::Change, &IsObjectShown, &AskServicePeriod},
    {C::ServiceLogOnly, 3109, "", Right::Change, &IsObjectShown,
     [](const T& t, int item) { t.objects.LogOnlyFor(item); }},
    {C::ObjectComments, 3111, "", Right::Operate, &IsObjectShown,
     [](const T& t, int) { t.objects.OpenSheet(); }},
    {C::ObjectEdit, 3112, "", Right::Edit, &IsObjectShown,
     [](const T& t, int) { t.objects.EditInformation(); }},
    {C::TypeCodeEdit, 3113, "", Right::Edit, &IsObjectShown,
     [](const T& t, int item) { t.objects.EditTypeCode(item); }},
    {C::DataCodeEdit, 3114, "", Right::Edit, &IsObjectShown,
     [](const T& t, int item) { t.objects.EditDataCode(item); }},
    {C::ResetAliveTest, 3115, "", Right::Change, &IsObjectShown,
     [](const T& t, int) { t.objects.ResetAliveTests(); }},
    {C::LineHold, 5058, "", Right::Edit,
     [](const I& in) { return in.tab == Tab::Lines && in.isLineSelected && IsOwnCopy(in); },
     [](const T& t, int) { t.lines.ToggleHeld(); }},
    {C::UndoEnd, 5066, "Ctrl+Z", Right::Change, [](const I& in) { return in.canUndo; },
     [](const T& t, int) { t.alarms.Undo(); }},
    {C::FollowNews, 5067, "Ctrl+Down", Right::None, [](const I& in) { return in.hasNews; },
     [](const T& t, int) { t.alarms.FollowNews(); }},
    {C::HistoryReports, 5481, "Ctrl+H", Right::Operate, &Always, [](const T& t, int) { t.history.Open(); }},
    {C::FindAnything, 5600, "Ctrl+K", Right::Operate, &Always,
     [](const T& t, int) { t.window.Find().Open(); }},
};
static_assert(std::size(kRules) == static_cast<std::size_t>(kCommandCount));

const Rule& RuleOf(Command command) {
    return kRules[static_cast<std::size_t>(command)];
}

bool IsAllowed(Right right, const OperatorRights& rights) {
    switch (right) {
        case Right::None:
            return true;
        case Right::Operate:
            return rights.MayOperate();
        case Right::Edit:
            return rights.MayEdit();
        case Right::Change:
            return rights.MayChange();
    }
    return false;
}

bool IsChecked(const Rule& rule, const I& in) {
    if (rule.command == C::LineHold) return in.isLineHeld;
    if (rule.command == C::ShowLast) return in.checked.AlwaysShowLastAlarm && in.checked.ShowTabAutomatic;
    return rule.checked && in.checked.*rule.checked;
}

constexpr int Item(Command command) {
    return static_cast<int>(command);
}
constexpr int kFileMenu[] = {Item(C::FileLogin), Item(C::FileLogout), Item(C::SetClock), kMenuSeparator,
                             Item(C::Exit)};
constexpr int kAlarmMenu[] = {Item(C::MenuAckAll),    Item(C::UndoEnd),      Item(C::FileSoundStop),
                              Item(C::FollowNews),    Item(C::MenuShowLast), kMenuMaps,
                              kMenuSeparator,         Item(C::FilePrint),    Item(C::ShiftHandover),
                              Item(C::HistoryReports)};
constexpr int kEditMenu[] = {Item(C::FindAnything), Item(C::SelectAll), kMenuSeparator, Item(C::PrinterFont),
                             Item(C::FileSetup)};
constexpr int kViewMenu[] = {Item(C::ShowSysLog),   Item(C::ShowDebug),     Item(C::ShowIdCodes),
                             Item(C::ShowTypes),    Item(C::ShowDataCodes), kMenuSeparator,
                             Item(C::TabAutomatic), kMenuSeparator,         Item(C::MenuUpdate)};
constexpr int kSimulateMenu[] = {Item(C::SimAlarm), Item(C::Sim100Alarms), Item(C::LoadEvents)};
constexpr int kHelpMenu[] = {Item(C::Keys), kMenuSeparator, Item(C::About)};
constexpr MenuRow kMenus[] = {{3020, kFileMenu}, {3021, kAlarmMenu},          {3022, kEditMenu},
                              {3023, kViewMenu}, {3024, kSimulateMenu, true}, {3025, kHelpMenu}};

}  // namespace

CommandStates CalcCommands(const CommandInputs& inputs) {
    CommandStates states;
    std::ranges::transform(kRules, states.begin(), [&](const Rule& rule) {
        return CommandState{.isVisible = rule.isVisible(inputs),
                            .isEnabled = rule.isEnabled(inputs) && IsAllowed(rule.right, inputs.rights),
                            .isChecked = IsChecked(rule, inputs)};
    });
    return states;
}

void RunCommand(Command command, const CommandTargets& targets, int item) {
    RuleOf(command).act(targets, item);
}

int CaptionOf(Command command) {
    return RuleOf(command).caption;
}

const char* KeysOf(Command command) {
    return RuleOf(command).keys;
}

bool IsCheckable(Command command) {
    return command == C::ShowLast || command == C::LineHold || RuleOf(command).checked;
}

TabStates CalcVisibility(const ViewState& checked, FloatingWindows floating, Tab current) {
    TabStates states;
    states.isVisible = {true,
                        true,
                        checked.ShowSysLog && !floating.sysLog,
                        checked.ShowDebug && !floating.debug,
                        checked.ShowIdCodes,
                        checked.ShowTypes,
                        checked.ShowDataCodes,
                        true};
    states.isSysLogWindow = checked.ShowSysLog && floating.sysLog;
    states.isDebugWindow = checked.ShowDebug && floating.debug;
    states.current = states.isVisible[static_cast<std::size_t>(current)] ? current : Tab::Unacked;
    return states;
}

int CaptionOf(Tab tab) {
    return tab == Tab::Lines ? kCaptionLines : kCaptionFirstTab + static_cast<int>(tab);
}

std::span<const MenuRow> MainMenus() {
    return kMenus;
}

}  // namespace nordkeep
