#pragma once

#include "console/lists/AlarmLists.h"
#include "console/lists/CodeLists.h"
#include "console/lists/ObjectList.h"
#include "console/lists/OperatorWindows.h"
#include "console/lists/PortTree.h"
#include "console/lists/SysLogList.h"
#include "console/lists/TranslationMarks.h"
#include "console/window/AlarmCommands.h"
#include "console/window/Commands.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/DebugPage.h"
#include "console/window/ObjectMenu.h"
#include "console/window/StatusTexts.h"
#include "runtime/DataFiles.h"

#include <functional>

namespace nordkeep {

/// What commands of the main window bring about elsewhere. An effect that is not given does nothing.
struct ConsoleEffects {
    using Effect = std::function<void()>;
    Effect silenceSound = [] {};
    Effect update = [] {};    // the translations are read, on a client fetched, again
    Effect setClock = [] {};  // in the receivers that have one
    Effect login = [] {};     // shows the dialog
    Effect logout = [] {};
    Effect exit = [] {};  // asks first
    Effect simulateAlarm = [] {};
    Effect simulate100Alarms = [] {};
    Effect loadEvents = [] {};
    Effect choosePrinterFont = [] {};
    Effect showSettings = [] {};
    Effect showAbout = [] {};
    Effect showShiftList = [] {};
    /// Prints rows of an alarm list.
    std::function<void(const AlarmRows& list, const std::vector<Text>& keys)> print =
        [](const AlarmRows&, const std::vector<Text>&) {};
    /// Opens an editor on a text file below the data folder.
    std::function<void(const Text& path)> editText = [](const Text&) {};
    /// The same for a translation file.
    std::function<void(const Text& path)> editTranslation = [](const Text&) {};
    /// Asks for the times of a service period: set and ID code.
    std::function<void(const Text& set, const Text& idCode)> askServicePeriod = [](const Text&, const Text&) {
    };
    std::function<void(cTranslate& set, cIDCode& object, const ServicePeriod& period)> setService =
        [](cTranslate&, cIDCode&, const ServicePeriod&) {};
    std::function<void(cTranslate& set, cIDCode& object)> resetAliveTests = [](cTranslate&, cIDCode&) {};
};

/// What the window has to know of the rest of the system; asked again on every tick.
struct ConsoleSurroundings {
    OperatorRights rights{};
    Text fullName{};  // of a client's user
    Text server{};    // of a client
    int clients = 0;  // of a server
    bool isSounding = false;
    bool arePortsDisabled = false;
    bool isFlood = false;  // alarms come faster than they can be opened
    bool hasGoogolPort = false;
    bool isSimulation = false;
    bool mayAskServer = true;  // no request of a client is waiting for its answer
};

/// Who shows the main window. It asks the model for everything that it shows.
class MainBoxView {
 public:
    virtual ~MainBoxView() = default;
    /// Commands, pages, captions, banners or selections may have changed.
    virtual void ShowState() = 0;
    /// The model has selected rows itself.
    virtual void ShowSelection(Tab tab) = 0;
    /// Brings a row into sight.
    virtual void Reveal(Tab tab, const Text& key) = 0;
    /// Restores a minimised window and brings it to the front, without taking the keys from who types.
    virtual void PopUp() = 0;
};

/// The operator's main window without its pixels: pages, lists, selections, commands and texts.
class MainBox {
 public:
    struct Needs {
        EventStore& store;
        AlarmLists& lists;
        AlarmCommands& commands;
        const AlarmCells& cells;
        Translations& translations;
        TranslationMarks& marks;
        const TranslationSettings& translationSettings;
        SysLogList& sysLog;
        DebugPage& debug;
        DataFiles& files;
        const Captions& captions;
        const Clock& clock;
        const ConsoleSettings& settings;
        OperatorWindows& windows;
        /// The nodes of the tree, on a copy with ports of its own.
        std::function<std::vector<PortTreeNode>()> portTree{};
        std::function<ConsoleSurroundings()> surroundings = [] { return ConsoleSurroundings(); };
        ConsoleEffects effects{};
    };
    MainBox(const Needs& needs, const ViewState& view);
    ~MainBox();
    MainBox(const MainBox&) = delete;
    MainBox& operator=(const MainBox&) = delete;

    void SetScreen(MainBoxView* screen) { screen_ = screen; }
    const Captions& Words() const { return needs_.captions; }
    const ConsoleSettings& Looks() const { return needs_.settings; }

    // --- Lists and tree

    RowModel* ListOf(Tab tab);
    AlarmRows* AlarmList(Tab tab);
    PortTree& Tree() { return tree_; }
    DebugPage& Debug() { return needs_.debug; }

    // --- Pages

    const TabStates& Tabs() const { return tabs_; }
    void ShowTab(Tab tab);

    // --- Selection, by the keys of rows

    void Select(Tab tab, std::vector<Text> keys, Text current);
    const std::vector<Text>& Selected(Tab tab) const { return SelectionOf(tab).keys; }
    const Text& CurrentKey(Tab tab) const { return SelectionOf(tab).current; }
    /// The alarm that was clicked last; none when it has gone.
    const cAlarm* CurrentAlarm() const;
    /// A click on a node of the tree: lists 4 to 6 show its set.
    void SelectNode(int node);
    /// A double click on the row of an alarm: sheet or map, nothing when more than one is selected.
    void LaunchCommentOrMap(Tab tab);
    /// A double click or Enter on a row of any list.
    void Activate(Tab tab);
    void SetFilter(Tab tab, TextView words);

    // --- Commands

    const CommandState& StateOf(Command command) const { return states_[static_cast<std::size_t>(command)]; }
    /// Does nothing when the command is not enabled. `item` is that of a command that is a list.
    void Run(Command command, int item = 0);
    Text CaptionOfCommand(Command command) const;
    /// Whether the right button opens a popup: never for a client's nobody.
    bool MayShowPopup() const { return inputs_.rights.MayOperate(); }
    /// The popup of the selected object.
    ObjectMenu MenuOfObject();
    /// The items of its submenus, fetched when they are opened.
    std::vector<ObjectMenu::CodeItem> TypeCodeItems();
    std::vector<ObjectMenu::CodeItem> DataCodeItems();
    /// The maps of the folder and of the selected set's folder: file names below the data folder.
    std::vector<Text> Maps() const;
    void OpenMap(const Text& file);
    /// The text that goes to the clipboard.
    Text CopyText(Tab tab) const;
    const ViewState& Checked() const { return inputs_.checked; }
    /// The state that a clean stop keeps.
    ViewState StateToSave() const;

    // --- What happens at the operator's place; see OperatorDesk and ClientScreen

    /// A new alarm is in the lists.
    void OfferNewAlarm(const cAlarm& alarm);
    void KeepAsLatest(const cAlarm& alarm) { latestAlarm_ = alarm.m_FilePointer; }
    void PopUp();
    /// A client's tree.
    void ForgetTree();
    void ShowTree(const std::vector<PortTreeNode>& nodes);
    /// The user, the connection or the sound has changed; otherwise the next tick sees it.
    void SurroundingsChanged() { Recalc(); }

    // --- Texts

    /// The alarm's text, then what is known of its object, and of its type if the settings want that.
    Text AlarmInfo();
    /// The link of the current alarm; empty unless it begins with http: or https:.
    Text Link() const;
    /// The status line of a list for its selected alarm; empty for the other pages.
    Text StatusLine(Tab tab) const;
    StatusTexts Status() const;
    std::vector<Banner> Banners() const;
    Text Title() const;
    Tray TrayIcon() const;

    /// One tick of the display's timer: everything that has changed is shown.
    void Tick(int elapsedMs);

 private:
    struct Selection {
        std::vector<Text> keys{};
        Text current{};
    };
    struct PendingShow {
        Text key{};
        bool isToSelect = false;
        bool isToReveal = false;
    };

    Selection& SelectionOf(Tab tab) { return selections_[static_cast<std::size_t>(tab)]; }
    const Selection& SelectionOf(Tab tab) const { return selections_[static_cast<std::size_t>(tab)]; }
    bool IsAlarmTab(Tab tab) const { return tab == Tab::Unacked || tab == Tab::Acked; }
    bool HasSelection(Tab tab) const;
    void TakeCurrentAlarm();
    std::vector<Text> KeysInOrder(Tab tab) const;

    void Recalc();
    void ReadSurroundings();
    bool HasMap() const;
    const cAlarm* AlarmOfMap() const;
    void ShowWhatIsPending();
    void ShowChangedObjects();
    AliveState StateOfSet(const Text& set) const;
    void ShowSet(const Text& set);
    void RenewDataCodes();

    void Toggle(bool ViewState::*item);
    void ToggleShowLast();
    void PrintList();
    void OpenSheet();
    void OpenMapOfSelected();
    void SetServiceMode(const ServicePeriod& period);
    void RunOnObject(Command command, int item);

    Needs needs_;
    MainBoxView* screen_ = nullptr;
    ObjectList objects_;
    TypeList types_;
    DataCodeList dataCodes_;
    PortTree tree_{};
    std::array<Selection, kTabCount> selections_{};
    CommandInputs inputs_{};
    ConsoleSurroundings around_{};
    CommandStates states_{};
    TabStates tabs_{};
    std::int32_t currentAlarm_ = 0;
    std::int32_t latestAlarm_ = 0;
    PendingShow pending_{};
    bool areDataCodesToRead_ = false;
    int sinceGlyphsMs_ = 0;
    bool areGlyphsToCalc_ = true;
    std::uint64_t shownGeneration_ = 0;
    Text infoOf_{};  // which alarm the kept text is about
    Text info_{};
};

}  // namespace nordkeep
