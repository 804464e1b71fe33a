#pragma once

#include "console/lists/AlarmLists.h"
#include "console/lists/OperatorState.h"
#include "console/lists/OperatorWindows.h"
#include "console/lists/RowSelection.h"
#include "console/print/AlarmPrinting.h"
#include "console/window/AlarmCommands.h"
#include "console/window/ConsoleSettings.h"
#include "console/window/PageFrame.h"
#include "runtime/DataFiles.h"

namespace nordkeep {

/// The pages of the new and of the old alarms: their lists, what is selected, and what is told and done about
/// it.
class AlarmPage {
 public:
    struct Needs {
        const EventStore& store;
        AlarmLists& lists;
        AlarmCommands& commands;
        AlarmPrinting& printing;
        const AlarmCells& cells;
        DataFiles& files;
        const Captions& captions;
        const ConsoleSettings& settings;
        const OperatorState& state;
        OperatorWindows& windows;
        /// Object information is read anew. A client shows what it was told with the alarm, and asks its
        /// server for no more.
        bool readsObjectFiles = true;
    };
    AlarmPage(const Needs& needs, PageFrame& frame) : needs_(needs), frame_(frame) {}

    /// The list of one of the two pages.
    AlarmRows& ListOf(Tab tab);
    const AlarmRows& ListOf(Tab tab) const;
    void SetFilter(Tab tab, TextView words);

    void Select(Tab tab, RowSelection selection);
    const RowSelection& SelectionOf(Tab tab) const { return tab == Tab::Acked ? acked_ : unacked_; }
    bool IsAnySelected(Tab tab) const { return SelectionOf(tab).IsIn(ListOf(tab)); }
    /// The page has come up: its alarm becomes the current one.
    void TurnTo(Tab tab);
    /// The alarm that was clicked last; none when it has gone, or has left the list in which it is selected.
    const cAlarm* Current() const;
    bool HasMap() const;

    /// A new alarm is in the lists.
    void OfferNewAlarm(const cAlarm& alarm);
    void KeepAsLatest(const cAlarm& alarm) { latest_ = alarm.m_FilePointer; }
    /// The operator has ended it: at the next tick the row that moves up to its place is selected.
    void AlarmEnded(std::int32_t filePointer);
    /// At a tick, when its row is there: selects and reveals what was offered.
    void ShowWhatIsPending();

    // --- New alarms that nobody can see

    /// The rows of the new alarms that can be seen; none of them when another page is shown.
    void NoteVisible(int first, int last);
    bool HasNews() const { return News().Count() > 0; }
    /// "3 new below, highest priority 1"; empty without any.
    Text NewsText() const;
    /// Turns to them: selects the nearest.
    void FollowNews();

    /// A double click or Enter: sheet or map of the selected alarm, nothing when more than one is selected.
    void Activate(Tab tab);
    void EndAll();
    void EndSelected();
    void ArchiveSelected();
    /// Takes the end of several alarms back, as long as that is offered.
    void Undo() { needs_.commands.Undo(); }
    /// The offer; empty without one.
    Text UndoText() const;
    void Print();
    void OpenSheet();
    void OpenMap();

    /// The alarm's text, then what is known of its object, and of its type if the settings want that.
    Text Info();
    /// The text is made anew.
    void ForgetInfo() { infoOf_.clear(); }
    /// The link of the current alarm; empty unless it begins with http: or https:.
    Text Link() const;
    /// The status line of a list for its selected alarm.
    Text StatusLine(Tab tab) const;
    /// The selected rows, for the clipboard.
    Text CopyText(Tab tab) const;

 private:
    struct PendingShow {
        Text key{};
        bool isToSelect = false;
        bool isToReveal = false;
    };

    std::vector<Text> KeysInOrder(Tab tab) const { return SelectionOf(tab).KeysInOrder(ListOf(tab)); }
    void TakeCurrent(Tab tab);
    void NotePlace();
    void MoveOn();
    AlarmRows::News News() const;
    const cAlarm* Find(std::int32_t filePointer) const;
    const cAlarm* OfMap() const;
    Text NewInfo(const cAlarm& alarm);

    Needs needs_;
    PageFrame& frame_;
    RowSelection unacked_{};
    RowSelection acked_{};
    std::int32_t current_ = 0;
    std::int32_t latest_ = 0;
    PendingShow pending_{};
    int place_ = -1;           // row of the first selected new alarm; -1 without one
    bool isToMoveOn_ = false;  // when no selected row is left there
    int firstVisible_ = 0;
    int lastVisible_ = 0;
    Text infoOf_{};  // which alarm the kept text is about
    Text info_{};
};

/// One of the two pages of alarms.
inline bool IsAlarmTab(Tab tab) {
    return tab == Tab::Unacked || tab == Tab::Acked;
}

}  // namespace nordkeep
