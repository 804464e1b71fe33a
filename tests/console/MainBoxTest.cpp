#include "tests/console/MainBoxWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// Writes down what the model wants to be shown.
class RecordingScreen final : public MainBoxView {
 public:
    void SelectAllRows(Tab) override { asked += "all;"; }
    void PutOnClipboard(const Text& text) override { asked += "copy " + text + ";"; }
    void ShowKeys() override { asked += "keys;"; }
    void ShowAbout() override { asked += "about;"; }
    void ShowFindings() override { asked += "findings;"; }
    void ClearFilter(Tab) override { asked += "no filter;"; }
    void ChoosePrinterFont() override { asked += "font;"; }
    void ShowState() override { ++states; }
    void ShowSelection(Tab) override {}
    void Reveal(Tab, const Text& key) override { revealed += key + ";"; }
    void PopUp() override { ++popUps; }
    int states = 0;
    int popUps = 0;
    Text revealed{};
    Text asked{};
};

class MainBoxTest : public ::testing::Test {
 protected:
    void Start(const Text& general = {}, Role role = Role::StandAlone) {
        world.around.rights.role = role;
        world.WriteGeneral(general + "ShowIdCodes=1\r\nShowDataCodes=1\r\n",
                           "[ListView_Unacked]\r\nColumns=TRTYPECODE,CUSTOMER\r\n");
        world.Start(role);
    }
    bool IsOn(Command command) {
        world.Box().SurroundingsChanged();
        return world.Box().StateOf(command).isEnabled;
    }
    void SelectObject(const Text& key) {
        world.Box().Objects().SelectNode(world.Box().Objects().Tree().At(1).children.front());
        world.Box().ShowTab(Tab::IdCodes);
        world.Box().Select(Tab::IdCodes, {{key}, key});
    }

    MainBoxWorld world{};
};

TEST_F(MainBoxTest, ANewAlarmIsShownAsTheOperatorWantsIt) {
    struct Row {
        bool showLast, tabAutomatic, isSelected, isFiltered;
        int status;
        bool becomesSelected, isRevealed, turnsTab;
    };
    for (const Row& row : {Row{false, false, false, false, 0, true, true, false},
                           Row{false, false, true, false, 0, false, false, false},
                           Row{false, false, false, true, 0, false, false, false},
                           Row{true, false, true, false, 0, false, true, false},
                           Row{false, true, true, false, 0, false, false, true},
                           Row{true, true, true, false, 3, true, true, true},
                           Row{true, true, false, false, 5, false, false, false}}) {
        Start(Text("AlwaysShowLastAlarm=") + (row.showLast ? "1" : "0") +
              "\r\nShowTabAutomatic=" + (row.tabAutomatic ? "1" : "0") + "\r\n");
        RecordingScreen screen;
        world.Box().SetView(&screen);
        cAlarm& known = world.Raise("known");
        world.Tick();
        if (row.isSelected) world.Click(Tab::Unacked, known);
        if (row.isFiltered) world.Box().Alarms().SetFilter(Tab::Unacked, "o");
        world.Box().ShowTab(Tab::Acked);
        cAlarm& alarm = world.Raise("no", row.status);
        world.Box().Alarms().OfferNewAlarm(alarm);
        world.Tick();
        const bool isSelected = world.Box().SelectionOf(Tab::Unacked).current == RowKey(alarm);
        EXPECT_EQ(isSelected, row.becomesSelected) << row.showLast << row.tabAutomatic << row.isSelected;
        EXPECT_EQ(screen.revealed == RowKey(alarm) + ";", row.isRevealed);
        EXPECT_EQ(world.Box().Tabs().current == Tab::Unacked, row.turnsTab);
        world.Box().SetView(nullptr);
    }
}

// With nothing selected the arrow key went to the end of the list.
TEST_F(MainBoxTest, TheRowThatMovesUpIsSelectedAfterAnEnd) {
    Start();
    std::vector<cAlarm*> alarms;
    for (int i = 0; i < 5; ++i) alarms.push_back(&world.Raise());
    world.Tick();
    AlarmPage& page = world.Box().Alarms();
    const auto end = [&](std::vector<int> rows) {
        RowSelection chosen;
        for (const int row : rows) chosen.keys.push_back(RowKey(*alarms[static_cast<std::size_t>(row)]));
        chosen.current = chosen.keys.back();
        world.Box().Select(Tab::Unacked, chosen);
        for (const int row : rows) {
            cAlarm& alarm = *alarms[static_cast<std::size_t>(row)];
            world.SetStatus(alarm, kStatusAcknowledged);
            page.AlarmEnded(alarm.m_FilePointer);
        }
        world.Tick();
        return world.Box().SelectionOf(Tab::Unacked).current;
    };
    EXPECT_EQ(end({1, 2}), RowKey(*alarms[3]));
    EXPECT_EQ(page.Current(), alarms[3]);
    EXPECT_EQ(end({4}), RowKey(*alarms[3])) << "below the last there is the one above";
    world.SetStatus(*alarms[3], kStatusAcknowledged);
    world.Tick();
    EXPECT_EQ(page.Current(), nullptr) << "ended by somebody else: nothing moves under the hand";
    EXPECT_EQ(page.Info(), "") << "no instruction of an alarm that is gone";
    EXPECT_FALSE(page.HasMap());
}

TEST_F(MainBoxTest, ASecondSelectedRowOpensNoSheet) {
    Start();
    cAlarm& first = world.Raise();
    cAlarm& second = world.Raise();
    world.Tick();
    const Text a = RowKey(first);
    const Text b = RowKey(second);
    world.Box().Activate(Tab::Unacked);
    world.Box().Select(Tab::Unacked, {{a, b}, a});
    world.Box().Activate(Tab::Unacked);
    EXPECT_EQ(world.windows.calls, "");
    world.Click(Tab::Unacked, second);
    world.Box().Activate(Tab::Unacked);
    EXPECT_EQ(world.windows.calls, "sheet " + std::to_string(second.m_FilePointer) + ";");
    world.windows.calls.clear();
    world.running->store.Forget(second);
    world.Box().Activate(Tab::Unacked);
    EXPECT_EQ(world.windows.calls, "") << "its record has gone";
}

TEST_F(MainBoxTest, ADoubleClickShowsTheMapWhereTheListWantsIt) {
    for (const bool wantsMap : {false, true}) {
        world.WriteGeneral(
            "", Text("[ListView_Unacked]\r\nDoubleClickShowsMap=") + (wantsMap ? "1" : "0") + "\r\n");
        world.Start();
        world.windows.calls.clear();
        cAlarm& alarm = world.Raise();
        alarm.m_TranslatedMapName = "Town.png/1/2";
        world.Tick();
        world.Click(Tab::Unacked, alarm);
        world.Box().Activate(Tab::Unacked);
        EXPECT_EQ(world.windows.calls.starts_with("map Town.png/1/2"), wantsMap);
        alarm.m_TranslatedMapName.clear();
        world.windows.calls.clear();
        world.Box().Activate(Tab::Unacked);
        EXPECT_TRUE(world.windows.calls.starts_with("sheet"));
    }
}

TEST_F(MainBoxTest, NobodyAtAClientOpensNothing) {
    Start({}, Role::Client);
    cAlarm& alarm = world.Raise();
    world.Tick();
    world.Click(Tab::Unacked, alarm);
    EXPECT_FALSE(world.Box().MayShowPopup());
    world.Box().Activate(Tab::Unacked);
    world.Box().Run(Command::CloseAlarm);
    world.Box().Run(Command::PopupComments);
    EXPECT_EQ(world.windows.calls, "");
    EXPECT_TRUE(world.dialogs.questions.empty());
    EXPECT_EQ(world.Box().Alarms().Info().substr(0, 4), "Fire") << "it may be read";
}

TEST_F(MainBoxTest, ArchivingOnAClientTakesTheRowAndKeepsTheRecord) {
    Start({}, Role::Client);
    world.around.rights.level = 1;
    cAlarm& alarm = world.Raise("Fire", kStatusAcknowledged);
    world.Box().ShowTab(Tab::Acked);
    world.Tick();
    world.Click(Tab::Acked, alarm);
    world.dialogs.answers = {true};
    world.Box().Run(Command::PopupArchive);
    world.Tick();
    EXPECT_EQ(world.running->lists.AckedCount(), 0u);
    EXPECT_EQ(alarm.m_Status, kStatusRemoved);
    EXPECT_EQ(world.running->store.FindAlarmByKey(alarm.m_FilePointer), &alarm);
    world.SetStatus(alarm, kStatusRemoved);
    EXPECT_EQ(world.running->lists.AckedCount(), 0u) << "the server's echo brings nothing back";
    EXPECT_FALSE(IsOn(Command::PopupArchive));
}

TEST_F(MainBoxTest, AQuestionThatOutlivesItsAlarmChangesNothing) {
    Start();
    cAlarm& alarm = world.Raise();
    world.Tick();
    world.Click(Tab::Unacked, alarm);
    world.dialogs.answers = {true};
    const std::int32_t number = alarm.m_FilePointer;
    world.running->store.Forget(alarm);
    world.Box().Run(Command::CloseAlarm);
    EXPECT_EQ(world.running->store.FindAlarmByKey(number), nullptr);
    EXPECT_EQ(world.running->lists.UnackedCount() + world.running->lists.AckedCount(), 0u);
}

TEST_F(MainBoxTest, AnAnswerCountsForNothingOnceTheServerHasGone) {
    class LosingDialogs final : public FakeDialogs {
     public:
        bool AskYesNo(const Text& question, Answer byDefault) override {
            around->rights.isConnectionLost = true;
            return FakeDialogs::AskYesNo(question, byDefault);
        }
        FakeCopy* around = nullptr;
    } dialogs;
    dialogs.around = &world.around;
    dialogs.answers = {true};
    Start({}, Role::Client);
    world.around.rights.level = 1;
    cAlarm& alarm = world.Raise();
    world.Tick();
    AlarmCommands commands({world.running->store, world.running->core.handling, dialogs, world.language,
                            world.time, world.around});
    commands.AckAll();
    EXPECT_EQ(alarm.m_Status, kStatusNew);
}

TEST_F(MainBoxTest, CopiesTheSelectedRowsInTheOrderOfTheList) {
    Start("AlarmCopyDelimiter=300\r\n");
    cAlarm& first = world.Raise("B");
    cAlarm& second = world.Raise("A\tA");
    world.Tick();
    world.Box().Select(Tab::Unacked, {{RowKey(second), RowKey(first)}, RowKey(second)});
    RecordingScreen screen;
    world.Box().SetView(&screen);
    world.Box().Run(Command::PopupCopy);
    EXPECT_EQ(screen.asked, "copy B\tTown council\r\nA A\tTown council\r\n;");
    world.Box().ShowTab(Tab::IdCodes);
    world.Box().Run(Command::PopupCopy);
    EXPECT_EQ(screen.asked.find("copy"), screen.asked.rfind("copy")) << "only from a list of alarms";
    world.Box().SetView(nullptr);
}

TEST_F(MainBoxTest, PrintsTheSelectedRowsOrAll) {
    Start();
    cAlarm& alarm = world.Raise();
    world.Raise();
    world.Tick();
    world.Box().Run(Command::PrintSelected);
    world.Box().Run(Command::FilePrint);
    world.Click(Tab::Unacked, alarm);
    world.Box().Run(Command::PrintSelected);
    ASSERT_EQ(world.printer.previewed.size(), 2u);
    EXPECT_EQ(world.printer.previewed[0].lines.size(), 2u);
    EXPECT_EQ(world.printer.previewed[1].lines.size(), 1u);
}

TEST_F(MainBoxTest, TheTreeKeepsSelectionAndShapeOverAReload) {
    Start();
    PortTree& tree = world.Box().Objects().Tree();
    const std::vector<PortTreeNode> nodes = {{0, "zebra"}, {1, "SIA"}, {2, "Town"}, {0, "\\Alpha"},
                                             {1, "SIA"},   {2, "b"},   {2, "A"},    {2, "Town"}};
    world.Box().Objects().ShowTree(nodes);
    EXPECT_EQ(tree.At(tree.Roots()[0]).text, "\\Alpha") << "sorted, and a text may begin with a backslash";
    const PortTree::Node& sia = tree.At(tree.At(tree.Roots()[0]).children[0]);
    EXPECT_EQ(tree.At(sia.children[0]).text, "A");
    world.Box().Objects().SelectNode(sia.children[2]);
    tree.SetExpanded(tree.Roots()[1], false);
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).RowCount(), 3);
    world.Box().Objects().ForgetTree();
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).RowCount(), 0);
    world.Box().Objects().ShowTree(nodes);
    ASSERT_EQ(tree.SelectedSet(), "Town");
    EXPECT_EQ(tree.At(tree.At(tree.At(tree.Selected()).parent).parent).text, "\\Alpha");
    EXPECT_FALSE(tree.IsExpanded(tree.Roots()[1]));
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).RowCount(), 3);
    world.Box().Objects().ShowTree({{2, "no parent"}, {0, "p"}, {2, "no protocol"}, {7, "?"}});
    EXPECT_EQ(tree.Count(), 1);
    world.Box().Objects().SelectNode(0);
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).RowCount(), 0) << "a port stands for no set";
}

TEST_F(MainBoxTest, TreeAndObjectsShowTheWorstButNotWhatIsInService) {
    Start("ViewAliveTestStatusInTree=1\r\n");
    cTranslate& set = *world.running->translations.Find("Town");
    SelectObject("1001");
    RowModel& objects = world.Box().ListOf(Tab::IdCodes);
    const auto glyphs = [&] {
        for (int i = 0; i < 5; ++i) world.Tick();
        const PortTree& tree = world.Box().Objects().Tree();
        return std::pair{tree.At(tree.Roots()[0]).glyph, objects.Icon(0)};
    };
    EXPECT_EQ(glyphs(), std::pair(Glyph::TreeAlive, Glyph::ObjectInUse));
    EXPECT_EQ(objects.Icon(1), Glyph::None) << "an object without a schedule";
    set.m_IdCodes[0]->m_AliveTestIntervalHasExceeded = true;
    world.running->marks.UpdateObjectTreeEntry(set, *set.m_IdCodes[0]);
    EXPECT_EQ(glyphs(), std::pair(Glyph::TreeFailed, Glyph::ObjectFailed));
    world.Box().Run(Command::ServiceLogOnly, 0);
    ASSERT_TRUE(world.running->period.IsOpen()) << "around the clock asks first";
    world.running->period.ChooseAroundTheClock();
    EXPECT_TRUE(world.running->period.IsOpen()) << "and wants a reason";
    world.running->period.SetReason("Rebuilding");
    world.running->period.ChooseAroundTheClock();
    EXPECT_EQ(objects.Cell(0, 10), "no end");
    EXPECT_EQ(glyphs(), std::pair(Glyph::TreePlain, Glyph::ObjectInService));
    world.Box().Run(Command::ServiceInUse);
    EXPECT_EQ(glyphs(), std::pair(Glyph::TreeAlive, Glyph::ObjectInUse)) << "a change clears the failures";
    set.m_IdCodes[0]->m_ServiceMode = 2;
    set.m_IdCodes[0]->m_ServicePeriodBegin = world.time.Now().PlusMinutes(1);
    set.m_IdCodes[0]->m_ServicePeriodEnd = world.time.Now().PlusMinutes(2);
    EXPECT_EQ(objects.Icon(0), Glyph::ObjectServicePlanned);
}

TEST_F(MainBoxTest, TheMenuOfAnObjectHasTheLengthsThatAreLengths) {
    for (const auto& [intervals, items] :
         {std::pair{"30,60", "1 2 0 "}, {"30,,60", "1 3 0 "}, {"abc", "0 "}, {"-5,15", "2 0 "}, {"", "0 "}}) {
        Text numbers;
        for (const auto& item : LogOnlyItems(Captions(world.language), intervals)) {
            numbers += std::to_string(item.item) + " ";
        }
        EXPECT_EQ(numbers, items) << intervals;
    }
    Start("ServiceIntervals=30,,60\r\n");
    world.folder.Write("Information\\Town\\1001.TXT", "x");
    world.folder.Write("Information\\Town\\1001\\05.txt", "x");
    SelectObject("1001");
    const ObjectMenu menu = world.Box().Objects().Menu();
    EXPECT_EQ(menu.service, "Service: In use");
    EXPECT_EQ(menu.edit, "Edit object information... *");
    const auto types = world.Box().Objects().TypeCodeItems();
    ASSERT_EQ(types.size(), 3u);
    EXPECT_EQ(types[0].caption, "01 Fire");
    EXPECT_EQ(types[2].caption, "05 Burglary *");
    world.Box().Run(Command::ServiceLogOnly, 3);
    const cIDCode& object = *world.running->translations.Find("Town")->m_IdCodes[0];
    EXPECT_EQ(object.m_ServicePeriodEnd, world.time.Now().PlusMinutes(60));
    world.Box().Run(Command::TypeCodeEdit, 2);
    world.Box().Run(Command::DataCodeEdit, 1);
    world.Box().Run(Command::TypeCodeEdit, 9);
    EXPECT_EQ(world.editorHost.calls,
              "edit Information\\Town\\1001\\05.TXT;edit Information\\Town\\1001\\BR.TXT;");
}

TEST_F(MainBoxTest, ListsOfASetSurviveItsReload) {
    Start();
    SelectObject("1002");
    EXPECT_EQ(world.Box().ListOf(Tab::Types).Cell(0, 2), "Fire");
    world.Box().ShowTab(Tab::DataCodes);
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).Cell(1, 0), "1002 Shop");
    world.folder.Write("Settings\\Town.IDCode", "FORMAT=1,4,0,0,5,2\r\n1009;Kiosk;\r\n");
    world.running->translations.ReloadAllTranslations(false, std::vector<PortBinding*>{&world.port});
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).Cell(1, 0), "") << "before the tick: no object, no crash";
    world.Tick();
    EXPECT_EQ(world.Box().ListOf(Tab::IdCodes).RowCount(), 1);
    EXPECT_FALSE(world.Box().StateOf(Command::SetService).isEnabled);
    world.Box().Run(Command::ServiceInUse);
    EXPECT_EQ(world.Box().Objects().Menu().service, "");
}

TEST_F(MainBoxTest, TellsItsStateInTitleTrayAndBanners) {
    Start({}, Role::Client);
    world.around.server = "central";
    world.around.rights.level = 1;
    world.around.fullName = "Anna %1 Karlsson";
    world.Raise();
    world.Tick();
    EXPECT_EQ(world.Box().Title(), "Nordkeep - central - Anna %1 Karlsson");
    EXPECT_EQ(world.Box().Status().user, "Logged in: Anna %1 Karlsson");
    EXPECT_EQ(world.Box().TrayIcon(), (Tray{TrayState::NewAlarms, 1}));
    EXPECT_TRUE(world.Box().Wrong().Rows().empty());
    world.around.rights.isConnectionLost = true;
    world.Tick();
    EXPECT_TRUE(world.Box().Title().ends_with(" - DISCONNECTED !"));
    EXPECT_EQ(world.Box().TrayIcon().state, TrayState::NoContact);
    EXPECT_TRUE(world.Box().Wrong().Has(ConditionKind::ContactLost));
    const Captions captions(world.language);
    EXPECT_EQ(TitleOf(captions, {.rights = {Role::Server}, .clients = 3}),
              "Nordkeep - Server, 3 clients connected");
    const OleDate then = world.time.Now();
    for (const auto& [seconds, text] : {std::pair{59, "59 s"},
                                        {60, "1:00"},
                                        {3599, "59:59"},
                                        {3600, "1:00:00"},
                                        {90000, "1 d 01:00"},
                                        {-5, "0 s"}}) {
        EXPECT_EQ(AgeText(then, then.PlusSeconds(seconds)), text);
    }
}

TEST_F(MainBoxTest, MutesOnlyTheChosenPortAndForATime) {
    Start();
    DebugPage& debug = world.Box().Debug();
    debug.Choose(1);
    debug.IgnoreResponse(true);
    EXPECT_EQ(debug.MutedPort(), "Port2");
    EXPECT_EQ(debug.MutedSeconds(), 60);
    for (int i = 0; i < 220; ++i) debug.Tick(250);
    debug.Send("<STX>A<13><nn<3>");
    EXPECT_EQ(world.ports.sent,
              "Port2:\x02"
              "A\r<nn\x03");
    EXPECT_EQ(debug.MutedSeconds(), 10) << "a message prolongs what is left";
    for (int i = 0; i < 40; ++i) debug.Tick(250);
    EXPECT_EQ(debug.MutedPort(), "");
    debug.IgnoreResponse(true);
    debug.Choose(0);
    EXPECT_FALSE(debug.IsIgnoringResponse()) << "another port is heard";
    world.Tick();
    EXPECT_EQ(world.running->sysLog.RowCount(), 4) << "each begin and end is logged";
}

TEST_F(MainBoxTest, ShowsTheBytesOfWatchedPortsOnly) {
    Start("DebugViewSize=3\r\n");
    DebugPage& debug = world.Box().Debug();
    debug.Watch(0, true);
    debug.NoteTraffic(
        "\x02"
        "A",
        TrafficDirection::Received, "Receiver");
    debug.NoteTraffic("B", TrafficDirection::Received, "Second");
    debug.SetHex(true);
    debug.NoteTraffic("C", TrafficDirection::Sent, "Receiver");
    world.Tick();
    ASSERT_EQ(debug.List().RowCount(), 2);
    EXPECT_EQ(debug.List().Cell(0, 0), "07:08:09 Receiver <- <STX>A");
    EXPECT_EQ(debug.List().Cell(1, 0), "07:08:09 Receiver -> 43 ");
    for (int i = 0; i < 10; ++i) debug.NoteTraffic("D", TrafficDirection::Sent, "Receiver");
    world.Tick();
    EXPECT_EQ(debug.List().RowCount(), 3);
    EXPECT_TRUE(debug.Save());
    EXPECT_TRUE(world.folder.Read("Data\\Debug.TXT").starts_with("Nordkeep Debug File, version "));
}

TEST_F(MainBoxTest, TheSystemLogIsAWindowOnItsEnd) {
    Start("LogViewSize=4\r\n");
    SysLogList& log = world.running->sysLog;
    world.running->log.WriteSysLog("one\r\n1;24-03-05;07:08:09 ;forged", LogKind::Failure);
    world.running->log.WriteSysLog("two", LogKind::Information);
    world.Tick();
    ASSERT_EQ(log.RowCount(), 2) << "nobody outside makes lines of the log";
    EXPECT_EQ(log.Icon(0), Glyph::LogFailure);
    EXPECT_EQ(log.Cell(1, 2), "two");
    const Text second = log.KeyOf(1);
    for (int i = 0; i < 3; ++i) world.running->log.WriteSysLog("x", LogKind::Information);
    world.Tick();
    EXPECT_EQ(log.RowCount(), 4);
    EXPECT_EQ(log.RowOf(second), 0) << "a row keeps its key while others go";
    for (int i = 0; i < 30; ++i) world.running->log.WriteSysLog(std::to_string(i), LogKind::Information);
    world.Tick();
    EXPECT_EQ(log.RowOf(second), -1);
    EXPECT_EQ(log.Cell(0, 2), "26");
    EXPECT_EQ(log.RowOf(log.KeyOf(3)), 3);
}

TEST_F(MainBoxTest, EveryCommandReachesWhatItActsOn) {
    Start();
    RecordingScreen screen;
    world.Box().SetView(&screen);
    world.around.hasGoogolPort = world.around.isSimulation = true;
    SelectObject("1001");
    using C = Command;
    for (const C command : {C::About, C::FileSetup, C::ShiftHandover, C::PrinterFont, C::Keys}) {
        world.Box().Run(command);
    }
    EXPECT_EQ(screen.asked, "about;font;keys;");
    EXPECT_EQ(world.running->shiftBox.Parts().size(), 4u);
    EXPECT_TRUE(world.running->setup.IsOpen());
    for (const C command : {C::Update, C::SetClock, C::LoadEvents, C::ResetAliveTest}) {
        world.Box().Run(command);
    }
    EXPECT_EQ(world.running->centre.calls, "reload;clocks;events;reset 1001;");
    for (const C command : {C::ObjectComments, C::ShowComments, C::ShowMap}) world.Box().Run(command);
    EXPECT_EQ(world.windows.calls, "object Town/1001;object Town/1001;map Town.png/10/20;");
    for (const C command : {C::ObjectEdit, C::TranslationEdit, C::EditIDCodes}) world.Box().Run(command);
    EXPECT_EQ(world.editorHost.calls, "edit Settings\\Town.IDCode;edit Settings\\Town.IDCode;");
    world.editorHost.takesAll = false;
    for (const C command : {C::TranslationEdit, C::EditIDCodes}) world.Box().Run(command);
    EXPECT_EQ(world.setEditors.calls, "information Town/1001;objects Town/1001;objects Town/1001;");
    world.Box().Run(C::ServicePeriod);
    EXPECT_TRUE(world.running->period.IsOpen());
    world.Box().Run(C::SimAlarm);
    EXPECT_TRUE(world.running->simulation.IsOpen());
    world.Box().Run(C::FileLogin);
    EXPECT_TRUE(world.running->login.IsOpen());
    world.Box().Run(C::Exit);
    EXPECT_EQ(world.end.ends, 0) << "a no";
    world.dialogs.answers = {true};
    world.Box().Run(C::Exit);
    EXPECT_EQ(world.end.ends, 1);
    world.Box().SetView(nullptr);
}

TEST_F(MainBoxTest, KeepsWhatIsCheckedForTheNextStart) {
    Start("ShowIdCodes=1\r\n");
    world.Box().Run(Command::ShowSysLog);
    world.Box().Run(Command::ShowIdCodes);
    world.Box().Run(Command::ShowLast);
    world.Box().Debug().SetHex(true);
    SaveViewState(world.running->files, world.Box().StateToSave());
    const ViewState read = LoadSettings(world.running->files, ViewStateRows());
    EXPECT_TRUE(read.ShowSysLog && read.AlwaysShowLastAlarm && read.ShowTabAutomatic &&
                read.Check_Debug_HexCode);
    EXPECT_FALSE(read.ShowIdCodes || read.ShowDebug);
}

}  // namespace
}  // namespace nordkeep
