#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/boxes/CommentSettings.h"
#include "console/boxes/SheetAids.h"
#include "console/lists/Captions.h"
#include "console/lists/ObjectForms.h"
#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/lists/WindowView.h"
#include "console/print/PrintDocument.h"
#include "pipeline/AlarmHandling.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "translation/Translations.h"

#include <deque>

namespace nordkeep {

/// One line of a list to choose from.
struct KeyAndValue {
    Text key{};
    Text value{};
};

/// What can be done on the sheet at this moment.
struct SheetControls {
    bool canType = false;
    bool canSave = false;
    bool canEnd = false;
    bool canSend = false;
    bool canPrintLog = false;
    bool canShowMap = false;
    bool hasAlarm = false;
    bool hasReceivers = false;
    bool hasSmallComment = false;
    bool isSmallCommentTooLong = false;
    friend bool operator==(const SheetControls&, const SheetControls&) = default;
};

/// What the sheet shows and no operator types. Line ends are CR LF.
struct SheetTexts {
    Text title{};
    Text object{};  // name and ID code
    Text alarm{};   // the alarm in one line; empty without one
    Text information{};
    std::vector<InformationRow> form{};  // in place of the information when it is shown as a form
    Text typeCodeInfo{};
    std::vector<Text> otherAlarms{};  // of the same object, the latest first, with their short comments
    std::vector<KeyAndValue> receivers{};
    std::vector<Text> phrases{};
    std::vector<PhoneNumber> phones{};  // of the object and the instruction, in the order of the texts
};

/// The sheet on which an operator handles one alarm or one object. There is one sheet, and it holds the key
/// of the alarm, never the record. Its operations may wait, for answers of the operator or of a server; while
/// one does, no other begins and the sheet stays.
class CommentBox {
 public:
    struct Needs {
        EventStore& store;
        AlarmHandling& handling;
        const Translations& translations;
        DataFiles& files;
        Dialogs& dialogs;
        const Language& language;
        const Captions& captions;
        const CommentSettings& settings;
        PrintOutput& printer;
        const PrinterSettings& printerSettings;
        const OperatorState& state;
        CentreOperations& centre;
        OperatorWindows& windows;
        ObjectForms& forms;
        const Clock& clock;
    };
    explicit CommentBox(const Needs& needs) : needs_(needs), comments_(needs.files) {}

    void SetView(WindowView& view) { view_ = &view; }

    /// False, and the sheet as it was, when there is no such alarm, or while an operation is under way.
    bool OpenAlarm(std::int32_t filePointer, OpenedBy by);
    bool OpenObject(const Text& set, const Text& idCode);
    bool IsOpen() const { return isOpen_; }
    /// Drops what has been typed.
    void Close();
    /// Closes unless something has been typed.
    void CloseIfUntouched();
    /// Brings the sheet to the front.
    void Raise() { view_->Show(OpenedBy::Operator); }
    /// Looks after the alarm: somebody else may have changed or ended it.
    void Tick();

    void TypeNewComments(Text text);
    void TypeSmallComment(Text text);
    bool HasTyped() const { return !newComments_.empty() || isSmallCommentTyped_; }

    /// What stands in front of a remark, for the cursor: "21:14 AB ".
    Text Stamp() const { return RemarkStamp(needs_.clock.Now(), needs_.state.Initials()); }
    /// The lines of the instruction and of the object's action plan that can be ticked.
    const std::vector<InstructionStep>& Steps() const { return steps_; }
    /// What is ticked stands in the new comment.
    void TickStep(std::size_t step, bool isDone);

    void Save();
    void EndAlarm();
    /// To the receiver at this place of the list.
    void Send(std::size_t receiver);
    void PrintInfo();
    void PrintLog();
    void ShowMap();

    const SheetTexts& Texts() const { return texts_; }
    /// What the operator should know about the last command, the alarm, or what cannot be done here.
    WindowNotice Notice() const;
    /// The word for the alarm's status; empty without an alarm.
    Text StatusWord() const;
    const Text& OldComments() const { return comments_.Content(); }
    const Text& NewComments() const { return newComments_; }
    const Text& SmallComment() const { return smallComment_; }
    /// "12 of 40 characters".
    Text SmallCommentCount() const;
    SheetControls Controls() const;

 private:
    struct Subject {
        std::optional<std::int32_t> filePointer{};
        Text set{};
        Text idCode{};
        Text typeCode{};
        Text objectName{};
        Text mapReference{};
        std::int32_t alarmId = 0;  // file numbers are used again
    };
    class Operation;
    enum class TextSaved { Nothing, Written, Refused };

    bool IsWaiting() const { return isBusy_ || needs_.state.IsRequestPending(); }
    void Open(Subject subject, OpenedBy by);
    void Load();
    void LoadReceivers();
    void LoadAids();
    /// What of the instruction stands in the saved comments as done.
    void NoteStepsDone();
    /// True when there is another list to show.
    bool RenewOtherAlarms();
    bool IsOtherAlarm(const cAlarm& alarm) const;
    Text AlarmLine(const cAlarm& alarm) const;
    cAlarm* Alarm() const;
    bool MayChange() const;
    TextSaved SaveText();
    bool MayOverwrite();
    void StoreInAlarm(bool isCommentWritten);
    /// What was typed for the alarm, if it is anything new; from now on it counts as saved.
    std::optional<Text> TakeSmallComment(const cAlarm& alarm);
    void Warn(int caption);

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    bool isOpen_ = false;
    bool isBusy_ = false;
    Subject subject_{};
    SheetTexts texts_{};
    WindowNotice notice_{};
    std::deque<EventSequence> others_{};  // the latest first
    EventSequence lookedUpTo_ = 0;        // for other alarms
    std::vector<InstructionStep> steps_{};
    SharedText comments_;
    Text newComments_{};
    Text smallComment_{};
    bool isSmallCommentTyped_ = false;
    bool hasLog_ = false;
    SheetControls shownControls_{};
};

/// The line that takes an alarm's text to a receiver of the dispatcher.
Text DispatcherLine(TextView receiver, TextView alarmText);

}  // namespace nordkeep
