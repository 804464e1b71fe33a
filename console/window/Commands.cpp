#include "console/window/Commands.h"

#include <algorithm>

namespace nordkeep {
namespace {

using C = Command;
using I = CommandInputs;

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

struct Rule {
    Command command;
    int caption;
    const char* keys;
    Right right;
    bool (*isEnabled)(const I&);
    bool (*isVisible)(const I&) = &Always;
    bool ViewState::*checked = nullptr;
};

// In the order of the commands.
constexpr Rule kRules[] = {
    {C::CloseAll, 3150, "Ctrl+Shift+E", Right::Change,
     [](const I& in) { return in.tab == Tab::Unacked && in.unackedRows > 0; }},
    {C::CloseAlarm, 3151, "Ctrl+E", Right::Change, &IsNewSelected},
    // A repeating sound can be silenced by anybody, from anywhere.
    {C::SoundStop, 3152, "", Right::None, [](const I& in) { return in.isSounding; }},
    {C::ShowLast, 3153, "", Right::Operate, &Always},
    {C::PrintSelected, 3154, "", Right::Operate, &IsAlarmSelected},
    {C::ShowComments, 3155, "F2", Right::Operate, &HasSomethingToComment},
    {C::EditIDCodes, 3156, "", Right::Edit,
     [](const I& in) { return in.isSetSelected && in.tab == Tab::IdCodes; }},
    {C::EditTypes, 3157, "", Right::Edit,
     [](const I& in) { return in.isSetSelected && in.tab == Tab::Types; }},
    {C::SetService, 3158, "", Right::Change, &IsObjectShown},
    {C::Update, 3159, "F5", Right::Operate, &Always},
    {C::ShowMap, 3160, "F4", Right::Operate, [](const I& in) { return in.hasMap; }},
    {C::FileLogin, 3030, "", Right::None, [](const I& in) { return in.rights.level <= 0; }, &IsClient},
    {C::FileLogout, 3031, "", Right::None, [](const I& in) { return in.rights.level > 0; }, &IsClient},
    {C::MenuAckAll, 3032, "", Right::Change, &Always},
    {C::FileSoundStop, 3033, "F8", Right::None, &Always},
    {C::MenuShowLast, 3034, "", Right::None, &Always, &Always, &ViewState::AlwaysShowLastAlarm},
    {C::SetClock, 3035, "", Right::Operate, [](const I& in) { return in.hasGoogolPort; }},
    {C::FilePrint, 3036, "Ctrl+P", Right::Operate, &IsAlarmList},
    {C::FileSetup, 3037, "", Right::Edit, &Always},
    {C::Exit, 3038, "", Right::None, &Always},
    {C::SimAlarm, 3039, "", Right::None, [](const I& in) { return !in.rights.IsClient(); }},
    {C::Sim100Alarms, 3040, "", Right::None, [](const I& in) { return !in.rights.IsClient(); }},
    {C::LoadEvents, 3041, "", Right::None, [](const I& in) { return !in.rights.IsClient(); }},
    {C::ShowSysLog, 3042, "", Right::None, &Always, &Always, &ViewState::ShowSysLog},
    {C::ShowDebug, 3043, "", Right::None, &Always, &Always, &ViewState::ShowDebug},
    {C::ShowIdCodes, 3044, "", Right::None, &Always, &Always, &ViewState::ShowIdCodes},
    {C::ShowTypes, 3045, "", Right::None, &Always, &Always, &ViewState::ShowTypes},
    {C::ShowDataCodes, 3046, "", Right::None, &Always, &Always, &ViewState::ShowDataCodes},
    {C::MapOfAlarm, 3160, "", Right::Operate, [](const I& in) { return in.hasMap; }},
    {C::TabAutomatic, 3048, "", Right::None, &Always, &Always, &ViewState::ShowTabAutomatic},
    {C::MenuUpdate, 3049, "", Right::Operate, &Always},
    {C::PrinterFont, 3050, "", Right::Edit, &Always},
    {C::SelectAll, 3051, "Ctrl+A", Right::None, &IsAlarmList},
    {C::ShiftHandover, 3764, "", Right::Operate, &Always},
    {C::Keys, 3640, "F1", Right::None, &Always},
    {C::About, 3052, "", Right::None, &Always},
    {C::PopupComments, 3100, "", Right::Operate, &IsAlarmSelected},
    {C::PopupCopy, 3101, "Ctrl+C", Right::Operate, &IsAlarmSelected},
    {C::PopupPrint, 3102, "", Right::Operate, &IsAlarmSelected},
    {C::PopupClose, 3103, "", Right::Change, &IsNewSelected},
    {C::PopupArchive, 3104, "", Right::Change, &IsOldSelected},
    {C::TranslationEdit, 3105, "", Right::Edit, [](const I& in) { return in.isSetSelected; }},
    {C::ServiceInUse, 3107, "", Right::Change, &IsObjectShown},
    {C::ServicePeriod, 3108, "", Right::Change, &IsObjectShown},
    {C::ServiceLogOnly, 3109, "", Right::Change, &IsObjectShown},
    {C::ObjectComments, 3111, "", Right::Operate, &IsObjectShown},
    {C::ObjectEdit, 3112, "", Right::Edit, &IsObjectShown},
    {C::TypeCodeEdit, 3113, "", Right::Edit, &IsObjectShown},
    {C::DataCodeEdit, 3114, "", Right::Edit, &IsObjectShown},
    {C::ResetAliveTest, 3115, "", Right::Change, &IsObjectShown},
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
    if (rule.command == C::ShowLast) return in.checked.AlwaysShowLastAlarm && in.checked.ShowTabAutomatic;
    return rule.checked && in.checked.*rule.checked;
}

constexpr int Item(Command command) {
    return static_cast<int>(command);
}
constexpr int kFileMenu[] = {Item(C::FileLogin), Item(C::FileLogout), Item(C::SetClock), kMenuSeparator,
                             Item(C::Exit)};
constexpr int kAlarmMenu[] = {Item(C::MenuAckAll), Item(C::FileSoundStop), Item(C::MenuShowLast), kMenuMaps,
                              kMenuSeparator,      Item(C::FilePrint),     Item(C::ShiftHandover)};
constexpr int kEditMenu[] = {Item(C::SelectAll), kMenuSeparator, Item(C::PrinterFont), Item(C::FileSetup)};
constexpr int kViewMenu[] = {Item(C::ShowSysLog),   Item(C::ShowDebug),     Item(C::ShowIdCodes),
                             Item(C::ShowTypes),    Item(C::ShowDataCodes), kMenuSeparator,
                             Item(C::TabAutomatic), kMenuSeparator,         Item(C::MenuUpdate)};
constexpr int kSimulateMenu[] = {Item(C::SimAlarm), Item(C::Sim100Alarms), Item(C::LoadEvents)};
constexpr int kHelpMenu[] = {Item(C::Keys), kMenuSeparator, Item(C::About)};
constexpr MenuRow kMenus[] = {{3020, kFileMenu}, {3021, kAlarmMenu},    {3022, kEditMenu},
                              {3023, kViewMenu}, {3024, kSimulateMenu}, {3025, kHelpMenu}};

}  // namespace

CommandStates CalcCommands(const CommandInputs& inputs) {
    CommandStates states;
    std::ranges::transform(kRules, states.begin(), [&](const Rule& rule) {
        return CommandState{.isVisible = rule.isVisible(inputs),
                            .isEnabled = rule.isEnabled(inputs) && IsAllowed(rule.right, inputs.rights),
                            .isChecked = IsChecked(rule, inputs)};
    });
    for (const C command : {C::SimAlarm, C::Sim100Alarms, C::LoadEvents}) {
        states[static_cast<std::size_t>(command)].isVisible = inputs.isSimulation;
    }
    return states;
}

int CaptionOf(Command command) {
    return RuleOf(command).caption;
}

const char* KeysOf(Command command) {
    return RuleOf(command).keys;
}

TabStates CalcVisibility(const ViewState& checked, FloatingWindows floating, Tab current) {
    TabStates states;
    states.isVisible = {true,
                        true,
                        checked.ShowSysLog && !floating.sysLog,
                        checked.ShowDebug && !floating.debug,
                        checked.ShowIdCodes,
                        checked.ShowTypes,
                        checked.ShowDataCodes};
    states.isSysLogWindow = checked.ShowSysLog && floating.sysLog;
    states.isDebugWindow = checked.ShowDebug && floating.debug;
    states.current = states.isVisible[static_cast<std::size_t>(current)] ? current : Tab::Unacked;
    return states;
}

int CaptionOf(Tab tab) {
    constexpr int kTextFirstTab = 3000;
    return kTextFirstTab + static_cast<int>(tab);
}

std::span<const MenuRow> MainMenus() {
    return kMenus;
}

}  // namespace nordkeep
