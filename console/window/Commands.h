#pragma once

#include "console/lists/OperatorRights.h"
#include "console/window/ViewState.h"

#include <array>
#include <cstddef>
#include <span>

namespace nordkeep {

/// The pages of the window, by their numbers.
enum class Tab : int { Unacked, Acked, SysLog, Debug, IdCodes, Types, DataCodes, Lines };
inline constexpr int kTabCount = 8;

/// Everything an operator can ask of the main window.
enum class Command : int {
    // The toolbar, in its order; the picture of a button is its number here plus 1.
    CloseAll,
    CloseAlarm,
    SoundStop,
    ShowLast,
    PrintSelected,
    ShowComments,
    EditIDCodes,
    EditTypes,
    SetService,
    Update,
    ShowMap,
    // The menus
    FileLogin,
    FileLogout,
    MenuAckAll,
    FileSoundStop,
    MenuShowLast,
    SetClock,
    FilePrint,
    FileSetup,
    Exit,
    SimAlarm,
    Sim100Alarms,
    LoadEvents,
    ShowSysLog,
    ShowDebug,
    ShowIdCodes,
    ShowTypes,
    ShowDataCodes,
    MapOfAlarm,
    TabAutomatic,
    MenuUpdate,
    PrinterFont,
    SelectAll,
    ShiftHandover,
    Keys,
    About,
    // The popups
    PopupComments,
    PopupCopy,
    PopupPrint,
    PopupClose,
    PopupArchive,
    TranslationEdit,
    ServiceInUse,
    ServicePeriod,
    ServiceLogOnly,
    ObjectComments,
    ObjectEdit,
    TypeCodeEdit,
    DataCodeEdit,
    ResetAliveTest,
    LineHold,
    UndoEnd,
    FollowNews,
    HistoryReports,
    FindAnything,
};
inline constexpr int kCommandCount = static_cast<int>(Command::FindAnything) + 1;
inline constexpr int kToolBarButtons = static_cast<int>(Command::ShowMap) + 1;

/// What the commands depend on.
struct CommandInputs {
    OperatorRights rights{};
    ViewState checked{};
    Tab tab = Tab::Unacked;
    std::size_t unackedRows = 0;
    bool isUnackedSelected = false;
    bool isAckedSelected = false;
    bool hasCurrentAlarm = false;
    bool hasMap = false;  // the current alarm, on the tab of the objects the selected object
    bool isSetSelected = false;
    bool isObjectSelected = false;
    bool isLineSelected = false;
    bool isLineHeld = false;
    bool canUndo = false;
    bool hasNews = false;  // new alarms that nobody can see
    bool isSounding = false;
    bool hasGoogolPort = false;
    bool isSimulation = false;
};

struct CommandState {
    bool isVisible = true;
    bool isEnabled = false;
    bool isChecked = false;
    friend bool operator==(const CommandState&, const CommandState&) = default;
};
using CommandStates = std::array<CommandState, static_cast<std::size_t>(kCommandCount)>;

/// The states of all commands: each command's own rule and the right of who works here.
CommandStates CalcCommands(const CommandInputs& inputs);

/// What commands act on.
struct CommandTargets;
/// Carries a command out. `item` is that of a command that is a list.
void RunCommand(Command command, const CommandTargets& targets, int item);

/// The number of a command's caption; 0 for one whose caption is made when it is shown.
int CaptionOf(Command command);
/// The keys that start a command, such as "Ctrl+E"; empty for none. A command of a popup has the keys of the
/// window.
const char* KeysOf(Command command);
/// Whether its item has a mark when it is on.
bool IsCheckable(Command command);

/// Which pages are there, and which of them is shown: the present one, or the first when it has gone.
struct TabStates {
    std::array<bool, kTabCount> isVisible{};
    Tab current = Tab::Unacked;
    bool isSysLogWindow = false;  // in a window of its own
    bool isDebugWindow = false;
};
struct FloatingWindows {
    bool sysLog = false;
    bool debug = false;
};
TabStates CalcVisibility(const ViewState& checked, FloatingWindows floating, Tab current);
int CaptionOf(Tab tab);

/// The menus of the menu bar: a caption's number and the commands; -1 is a separator, -2 the list of maps.
struct MenuRow {
    int caption = 0;
    std::span<const int> items{};
    bool isSimulation = false;
};
inline constexpr int kMenuSeparator = -1;
inline constexpr int kMenuMaps = -2;
std::span<const MenuRow> MainMenus();

}  // namespace nordkeep
