#pragma once

#include "app/CentreSettings.h"
#include "app/Foundation.h"
#include "app/NetworkRole.h"
#include "console/boxes/CommentBox.h"
#include "console/boxes/EditorBox.h"
#include "console/boxes/LoginBox.h"
#include "console/boxes/PeriodBox.h"
#include "console/boxes/ReconnectBox.h"
#include "console/print/ShiftList.h"
#include "console/window/AlarmRate.h"
#include "console/window/MainBox.h"
#include "console/window/OpenWindows.h"
#include "console/window/SettingsList.h"
#include "pipeline/AlarmOutputs.h"
#include "pipeline/DeskLink.h"
#include "pipeline/Dispatcher.h"
#include "ports/PortConditions.h"
#include "translation/AliveTestReset.h"

namespace nordkeep {

/// What the screen of a workplace shows besides the windows of the models.
class WorkplaceScreen {
 public:
    virtual ~WorkplaceScreen() = default;
    virtual void Beep() = 0;
    virtual void ShowAbout() = 0;
    virtual void ShowSettings() = 0;
    virtual void ShowShiftList() = 0;
    virtual void ChoosePrinterFont() = 0;
    virtual bool IsQuestionUp() const = 0;
    virtual PrintOutput& Printer() = 0;
    /// The program is about to end: what the windows keep is stored, and nothing is asked any more.
    virtual void PrepareForEnd() = 0;
};

/// The operator's place: all models of the console, each given what it works on. It exists on every copy; a
/// screen may be set behind it, and nothing here asks whether one is.
class Workplace final : public OperatorDesk, public ClientScreen, private PrintOutput {
 public:
    struct Needs {
        Foundation& foundation;
        const CentreSettings& settings;
        AlarmLists& lists;
        EventStore& store;
        AlarmHandling& handling;
        DeskLink& desk;
        Translations& translations;
        TranslationMarks& marks;
        ServicePeriods& servicePeriods;
        const AliveTestTimers& timers;
        Dispatcher& dispatcher;
        TorvexLink& torvex;
        AlarmOutputs& outputs;
        NetworkRole& network;
        const PortConditions& conditions;
        // What stands behind the workplace in the centre.
        std::function<std::vector<PortTreeNode>()> portTree;
        std::function<bool()> hasGoogolPort;
        std::function<void()> setClock;
        std::function<void(const Text& portName, TextView bytes)> sendOnPort;
        std::function<void()> requestReload;
        std::function<void()> simulateAlarm;
        std::function<void()> simulate100Alarms;
        /// The program is to end; as a failure, or because an operator wants it.
        std::function<void()> endOnFailure;
        std::function<void()> endProgram;
    };
    explicit Workplace(const Needs& needs);
    ~Workplace() override;

    void SetScreen(WorkplaceScreen* screen) { screen_ = screen; }
    /// The window has come up for the first time.
    void FirstShown();
    void NoteLogRow(const LogRow& row) { sysLog_.AddLine(row); }
    /// One tick of the display's timer.
    void Tick(int elapsedMs);
    /// A day is over.
    void PrintDay(OleDate day) { printing_.PrintDay(day); }
    /// Asks, and ends the program on yes.
    void AskForEnd();
    /// The end: nothing is asked any more.
    void Close();
    /// The name of the port that somebody has muted; empty for none.
    Text MutedPort() const { return debug_.MutedPort(); }
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
    const SettingsList& InForce() const { return inForce_; }
    const ShiftList& Shift() const { return shift_; }
    const PrinterSettings& PrinterLook() const { return printerSettings_; }
    /// Prints in this font from now on, and keeps it for later starts.
    void UsePrinterFont(const PrinterSettings& look);
    DebugPage& Debug() { return debug_; }

    // --- OperatorDesk
    void OfferSelection(const cAlarm& alarm) override { main_.OfferNewAlarm(alarm); }
    void KeepAsLatest(const cAlarm& alarm) override;
    void PopUp() override { main_.PopUp(); }
    void ViewComment(const cAlarm& alarm) override;
    void ViewMap(const cAlarm& alarm) override;
    void ShowPicture(const cAlarm& alarm, const Text& caption, bool isFollowedBySpeech) override;
    void Beep() override;
    void PrintAlarmPage(const cAlarm& alarm) override { printing_.PrintAlarmPage(alarm); }
    void AlarmEnded(std::int32_t filePointer) override { windows_.AlarmEnded(filePointer); }
    void AllAlarmsEnded() override { needs_.outputs.Sound().Silence(); }

    // --- ClientScreen
    void ShowLinkState(LinkState state) override;
    void ShowUser(const ClientUser& user) override;
    void AskForLogin() override;
    void ForgetPortTree() override { main_.ForgetTree(); }
    void ShowPortTree(const std::vector<PortTreeNode>& nodes) override { main_.ShowTree(nodes); }
    void PresentNewEvent(cAlarm& alarm) override;
    void EndProgram(const Text& message) override;

 private:
    void Print(const PrintDocument& document) override;
    void Preview(const PrintDocument& document) override;

    bool IsClient() const { return needs_.foundation.CopyRole() == Role::Client; }
    bool IsRequestPending() const;
    bool IsFlood() const;
    bool IsQuestionUp() const { return screen_ && screen_->IsQuestionUp(); }
    OperatorRights Rights() const;
    ConsoleSurroundings Surroundings() const;
    ConsoleEffects Effects();
    CommentBox::Needs SheetNeeds();
    EditorBox::Needs EditorNeeds();
    MainBox::Needs MainNeeds();
    ReconnectBox::Needs ReconnectNeeds();
    void PrintRows(const AlarmRows& list, const std::vector<Text>& keys);
    void EditTranslation(const Text& path);
    void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period);
    void ResetAliveTests(cTranslate& set, cIDCode& object);
    void Update();
    void LoadEvents();
    bool SendToDispatcher(const Text& line);
    void SendLogin(const Text& userName, const Text& password);
    void Logout();
    void ListSettings();

    Needs needs_;
    WorkplaceScreen* screen_ = nullptr;
    Captions captions_;
    PrinterSettings printerSettings_;
    std::unique_ptr<DataFiles> files_;
    OperatorRights rights_{};
    Text fullName_{};
    AlarmRate rate_{};
    AlarmCells cells_;
    SysLogList sysLog_{};
    DebugPage debug_;
    AlarmPrinting printing_;
    AlarmCommands commands_;
    CommentBox sheet_;
    MapBox map_;
    PictureBox picture_;
    OpenWindows windows_;
    LoginBox login_;
    ReconnectBox reconnect_;
    PeriodBox period_;
    EditorBox editor_;
    SettingsList inForce_;
    ShiftList shift_;
    MainBox main_;
};

}  // namespace nordkeep
