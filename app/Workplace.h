#pragma once

#include "app/PlaceRole.h"
#include "app/SetupEditors.h"
#include "app/TextFindings.h"
#include "app/settings/LiveSettings.h"
#include "console/boxes/CommentBox.h"
#include "console/boxes/LoginBox.h"
#include "console/boxes/PeriodBox.h"
#include "console/boxes/ReconnectBox.h"
#include "console/editors/SetEditors.h"
#include "console/history/ReportBox.h"
#include "console/history/ShiftBox.h"
#include "console/lists/ObjectForms.h"
#include "console/print/ShiftList.h"
#include "console/print/SpooledOutput.h"
#include "console/setup/LinesBox.h"
#include "console/setup/SetupBox.h"
#include "console/window/MainBox.h"
#include "console/window/OpenWindows.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/DeskLink.h"
#include "pipeline/Dispatcher.h"
#include "pipeline/Intake.h"

namespace nordkeep {

/// What the screen of a workplace does besides showing the windows of the models.
class WorkplaceScreen {
 public:
    virtual ~WorkplaceScreen() = default;
    virtual void Beep() = 0;
    virtual PrintOutput& Printer() = 0;
    /// The program is about to end: what the windows keep is stored, and nothing is asked any more.
    virtual void PrepareForEnd() = 0;
};

/// For a copy without a screen: paper is all that it has.
class NoWorkplaceScreen final : public WorkplaceScreen {
 public:
    explicit NoWorkplaceScreen(SpooledOutput& paper) : paper_(paper) {}
    void Beep() override {}
    PrintOutput& Printer() override { return paper_; }
    void PrepareForEnd() override {}

 private:
    SpooledOutput& paper_;
};

/// The operator's place: all models of the console, each given what it works on, and told what happens. It
/// exists on every copy, and nothing here asks for a screen or for the role.
class Workplace final : public OperatorDesk,
                        public ClientScreen,
                        private PrintOutput,
                        private SoundSwitch,
                        private SetEditors,
                        private SetupHost {
 public:
    struct Needs {
        Foundation& foundation;
        const CentreSettings& settings;
        LiveSettings& live;
        AlarmLists& lists;
        EventStore& store;
        AlarmHandling& handling;
        Deeds& deeds;
        DeskLink& desk;
        Translations& translations;
        TranslationMarks& marks;
        AlarmOutputs& outputs;
        SpooledOutput& paper;  // of a copy without a screen
        DebugLines& lines;
        ProgramEnd& end;
        // Built behind the place; nothing is asked of them before the program runs.
        Dispatcher& dispatcher;
        Intake& intake;
        const TorvexLink& torvex;
        SimulationBox& simulation;
    };
    Workplace(const Needs& needs, PlaceRole role);
    ~Workplace() override;

    /// The windows are made from the models, so the screen comes later; none: it goes again.
    void SetScreen(WorkplaceScreen* screen) { screen_ = screen ? screen : &noScreen_; }
    /// The window has come up for the first time.
    void FirstShown();
    void NoteLogRow(const LogRow& row) { sysLog_.AddLine(row); }
    /// Faults and warnings above the lists, one behind the other.
    Text WrongInWords() const;
    /// One tick of the display's timer.
    void Tick(int elapsedMs);
    /// A day is over.
    void PrintDay(OleDate day) { printing_.PrintDay(day); }
    /// Settings have been written: those that can count from now on.
    void RenewSettings();
    /// The end: nothing is asked any more.
    void Close();
    /// The name of the port that somebody has muted; empty for none.
    Text MutedPort() const {
        const Text muted = debug_.MutedPort();
        return muted.empty() ? role_.lines->MutedPort() : muted;
    }
    ViewState StateToSave() const { return main_.StateToSave(); }

    // The models, for the views.
    const Captions& Words() const { return captions_; }
    MainBox& Main() { return main_; }
    CommentBox& Sheet() { return sheet_; }
    MapBox& Map() { return map_; }
    PictureBox& Picture() { return picture_; }
    LoginBox& Login() { return login_; }
    ReconnectBox& Reconnect() { return reconnect_; }
    PeriodBox& Period() { return period_; }
    EditorBox& Editor() { return editor_; }
    SetupBox& Setup() { return setup_; }
    LinesBox& Lines() { return lines_; }
    SetupEditors& Editors() { return editors_; }
    HistoryBox& History() { return history_; }
    ReportBox& Report() { return report_; }
    ShiftBox& Shift() { return shiftBox_; }
    CardBox& Card() { return card_; }
    PrinterSettings& PrinterLook() { return printerSettings_; }
    DebugPage& Debug() { return debug_; }

    // --- OperatorDesk
    void OfferSelection(const cAlarm& alarm) override { main_.Alarms().OfferNewAlarm(alarm); }
    void KeepAsLatest(const cAlarm& alarm) override;
    void PopUp() override { main_.PopUp(); }
    void ViewComment(const cAlarm& alarm) override;
    void ViewMap(const cAlarm& alarm) override;
    void ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) override;
    void Beep() override { screen_->Beep(); }
    void PrintAlarmPage(const cAlarm& alarm) override { printing_.PrintAlarmPage(alarm); }
    void AlarmEnded(std::int32_t filePointer) override;
    Text UserName() const override { return role_.state->UserName(); }
    void AllAlarmsEnded() override { needs_.outputs.Sound().Silence(); }

    // --- ClientScreen
    void ShowLinkState(LinkState state) override;
    void ShowUser(const ClientUser& user) override;
    void AskForLogin() override;
    void ForgetPortTree() override { main_.Objects().ForgetTree(); }
    void ShowPortTree(const std::vector<PortTreeNode>& nodes) override { main_.Objects().ShowTree(nodes); }
    void PresentNewEvent(cAlarm& alarm) override { needs_.dispatcher.PresentAtDesk(alarm); }
    void EndProgram(const Text& message) override;

 private:
    void Print(const PrintDocument& document) override { screen_->Printer().Print(document); }
    void Preview(const PrintDocument& document) override { screen_->Printer().Preview(document); }
    void SilenceSound() override {
        needs_.outputs.Sound().Silence();
        needs_.deeds.Note(JournalKind::Silence, {.user = UserName(), .station = kHere}, {}, {});
    }
    void RingSound() override;

    void BeepInstead(int elapsedMs);
    void NoteSettings(const Text& what) override;
    bool PlaySound(const Text& file, const Text& device) override;
    std::vector<LanguageChoice> Languages() override;

    void EditObjects(const Text& set, const Text& idCode) override;
    void EditTypes(const Text& set) override;
    void EditInformation(const Text& set, const Text& idCode, const Text& name) override;

    AlarmCommands::Needs CommandNeeds();
    PlaceEditors::Needs EditorNeeds();
    std::vector<SetupSection*> Sections();
    CommentBox::Needs SheetNeeds();
    AlarmPage::Needs AlarmNeeds();
    ObjectPage::Needs ObjectNeeds();
    MainBox::Needs MainNeeds();
    HistoryBox::Needs HistoryNeeds();
    CardBox::Needs CardNeeds();

    Needs needs_;
    PlaceRole role_;
    Captions captions_;
    NoWorkplaceScreen noScreen_{needs_.paper};
    WorkplaceScreen* screen_ = &noScreen_;
    PrinterSettings printerSettings_;
    FileTexts fileTexts_{};
    AlarmCells cells_;
    SysLogList sysLog_;
    DebugPage debug_;
    AlarmPrinting printing_;
    OpenWindows windows_;
    AlarmCommands commands_;
    ObjectForms objectForms_;
    CommentBox sheet_;
    MapBox map_;
    PictureBox picture_;
    LoginBox login_;
    ReconnectBox reconnect_;
    PeriodBox period_;
    TextFindings textFindings_;
    EditorBox editor_;
    LinesBox lines_;
    SetupEditors editors_;
    SetupBox setup_;
    ShiftList shift_;
    HistoryBox history_;
    ReportBox report_;
    ShiftBox shiftBox_;
    CardBox card_;
    MainBox main_;
    int sinceBeepMs_ = 0;
};

}  // namespace nordkeep
