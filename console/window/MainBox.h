#pragma once

#include "console/boxes/LoginBox.h"
#include "console/boxes/SimulationBox.h"
#include "console/history/HistoryBox.h"
#include "console/history/ShiftBox.h"
#include "console/lists/SysLogList.h"
#include "console/setup/SetupBox.h"
#include "console/window/AlarmPage.h"
#include "console/window/CardBox.h"
#include "console/window/Conditions.h"
#include "console/window/CopyState.h"
#include "console/window/DebugPage.h"
#include "console/window/FindBox.h"
#include "console/window/LinesPage.h"
#include "console/window/ObjectPage.h"
#include "console/window/StatusTexts.h"

namespace nordkeep {

/// The operator's main window without its pixels: its pages, commands, and the texts around them.
class MainBox final : private PageFrame, private FindTargets {
 public:
    struct Needs {
        AlarmLists& lists;
        SysLogList& sysLog;
        DebugPage& debug;
        const Captions& captions;
        const Clock& clock;
        Dialogs& dialogs;
        const ConsoleSettings& settings;
        const CopyState& state;
        CentreOperations& centre;
        ServerContact& server;
        SoundSwitch& sound;
        ProgramEnd& end;
        LoginBox& login;
        SimulationBox& simulation;
        SetupBox& setup;
        HistoryBox& history;
        ShiftBox& shift;
        CardBox& card;
        EventLoop& loop;
        LineControl& lines;
        AlarmPage::Needs alarms;
        ObjectPage::Needs objects;
    };
    MainBox(const Needs& needs, const ViewState& checked);

    /// The view is made from this model, so it comes later; none: nothing is shown any more.
    void SetView(MainBoxView* view) { view_ = view ? view : &noView_; }
    const Captions& Words() const { return needs_.captions; }
    const ConsoleSettings& Looks() const { return needs_.settings; }

    // --- Pages

    AlarmPage& Alarms() { return alarms_; }
    ObjectPage& Objects() { return objects_; }
    DebugPage& Debug() { return needs_.debug; }
    LinesPage& Lines() { return lines_; }
    FindBox& Find() { return find_; }
    RowModel& ListOf(Tab tab);
    const TabStates& Tabs() const { return tabs_; }
    Tab CurrentTab() const override { return inputs_.tab; }
    void ShowTab(Tab tab) override;
    /// What is selected on a page; pages whose rows nobody works on keep nothing.
    void Select(Tab tab, RowSelection selection);
    const RowSelection& SelectionOf(Tab tab) const;
    /// A double click or Enter on a row of any list.
    void Activate(Tab tab);

    // --- Commands

    const CommandState& StateOf(Command command) const override {
        return states_[static_cast<std::size_t>(command)];
    }
    /// Does nothing when the command is not enabled. `item` is that of a command that is a list.
    void Run(Command command, int item = 0);
    /// Whether the right button opens a popup: never for a client's nobody.
    bool MayShowPopup() const { return needs_.state.Rights().MayOperate(); }
    /// What of the window is switched on.
    const ViewState& Checked() const override { return inputs_.checked; }
    void Toggle(bool ViewState::*item);
    /// What is switched on has been set elsewhere.
    void TakeState(const ViewState& checked);
    /// Ends the program on a yes.
    void AskForEnd();
    /// The state that a clean stop keeps.
    ViewState StateToSave() const;

    // --- What happens at the operator's place

    void PopUp();
    /// The user, the connection or the sound has changed; otherwise the next tick sees it.
    void SurroundingsChanged() { Recalc(); }
    /// One tick of the display's timer: everything that has changed is shown.
    void Tick(int elapsedMs);

    // --- Texts

    /// The status line of a list for its selected alarm; empty for the other pages.
    Text StatusLine(Tab tab) const { return IsAlarmTab(tab) ? alarms_.StatusLine(tab) : Text(); }
    StatusTexts Status() const;
    /// What stands in the middle of a list without rows: why it is empty.
    Text EmptyText(Tab tab) const;

    // --- What is wrong

    const Conditions& Wrong() const { return conditions_; }
    /// Shows what a condition is about.
    void OpenCondition(const Condition& condition);
    /// Somebody is to look up: what rings cannot be heard.
    bool IsToFlash() const {
        return facts_.isSounding &&
               (conditions_.Has(ConditionKind::SoundDead) || conditions_.Has(ConditionKind::Untouched));
    }
    Text Title() const;
    Tray TrayIcon() const;

 private:
    void PageChanged() override { Recalc(); }
    void RunFound(Command command) override { Run(command); }
    void ShowAlarm(std::int32_t filePointer) override;
    void OpenCard(const Text& set, const Text& idCode) override { needs_.card.Open(set, idCode); }
    MainBoxView& View() override { return *view_; }
    void Recalc();
    CommandInputs NewInputs() const;
    void RenewConditions();
    void CountUntouched(int elapsedMs);

    Needs needs_;
    NoMainBoxView noView_{};
    MainBoxView* view_ = &noView_;
    CommandInputs inputs_{};
    AlarmPage alarms_;
    ObjectPage objects_;
    LinesPage lines_;
    FindBox find_;
    Conditions conditions_;
    int untouched_ = 0;
    int sinceCountMs_ = 0;
    CopyFacts facts_{};
    CommandStates states_{};
    TabStates tabs_{};
};

}  // namespace nordkeep
