#include "console/boxes/EditorBox.h"
#include "console/boxes/LoginBox.h"
#include "console/boxes/PeriodBox.h"
#include "console/boxes/ReconnectBox.h"
#include "console/boxes/SimulationBox.h"
#include "console/print/AlarmPrinting.h"
#include "console/print/ShiftList.h"
#include "tests/console/SheetWorld.h"
#include "tests/doubles/RecordingIntake.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(LoginBox, CollectsWhatIsPrintable) {
    RecordingServer server;
    LoginBox login(server);
    login.Open(OpenedBy::Operator);
    login.Backspace();
    login.TypePassword("\x1b\t\r\x7f");
    EXPECT_EQ(login.Stars(), "");
    login.TypePassword("se\xE5x");
    login.Backspace();
    EXPECT_EQ(login.Stars(), "***");
    EXPECT_FALSE(login.IsOkEnabled());
    login.Ok();
    EXPECT_EQ(server.calls, "") << "never without a user's name";
    login.TypeUserName("anna");
    login.Ok();
    EXPECT_EQ(server.calls, "anna/se\xE5");
    EXPECT_FALSE(login.IsOpen());
    login.Open(OpenedBy::Itself);
    EXPECT_EQ(login.Stars(), "") << "nothing is left of the last time";
    EXPECT_FALSE(login.IsOkEnabled());
}

TEST(LoginBox, SaysThatTheServerHasRefused) {
    RecordingServer server;
    RecordingView view;
    LoginBox login(server);
    login.SetView(view);
    login.Answer(false);
    EXPECT_FALSE(login.IsOpen()) << "a logout is no refusal";
    login.Open(OpenedBy::Operator);
    login.TypeUserName("anna");
    login.TypePassword("wrong");
    login.Ok();
    login.Answer(false);
    EXPECT_TRUE(login.IsOpen());
    EXPECT_TRUE(login.IsRefused());
    EXPECT_EQ(login.UserName(), "anna");
    EXPECT_EQ(login.Stars(), "");
    login.TypePassword("right");
    login.Ok();
    login.Answer(true);
    EXPECT_FALSE(login.IsOpen());
    login.Open(OpenedBy::Itself);
    EXPECT_FALSE(login.IsRefused()) << "the next one begins anew";
    view.calls.clear();
    login.Raise();
    EXPECT_EQ(view.calls, "appear ") << "in front, without taking the keys from anybody";
}

TEST(ReconnectBox, FlashesWhileItWaitsAndCallsOnce) {
    ConsoleWorld w;
    RecordingView view;
    ReconnectBox box({.language = w.language,
                      .captions = w.captions,
                      .clock = w.time,
                      .loop = w.time,
                      .server = w.server,
                      .reconnectIntervalMs = 10000});
    box.SetView(view);
    box.ShowLinkState(LinkState::Connected);
    EXPECT_EQ(view.calls, "");
    box.ShowLinkState(LinkState::Lost);
    EXPECT_EQ(view.calls, "appear ");
    EXPECT_EQ(box.Label(), "gone");
    w.time.Advance(500);
    EXPECT_TRUE(box.IsFlashed());
    w.time.Advance(2000);
    EXPECT_EQ(box.Countdown(), w.captions(3759, {"8"}));
    box.Reconnect();
    box.ShowLinkState(LinkState::Connecting);
    box.Reconnect();
    EXPECT_EQ(w.server.calls, "reconnect;");
    EXPECT_EQ(box.Label(), "trying");
    w.time.Advance(600);
    EXPECT_FALSE(box.IsFlashed());
    box.ShowLinkState(LinkState::Lost);
    EXPECT_EQ(box.Countdown(), w.captions(3759, {"10"})) << "the whole interval again";
    box.ShowLinkState(LinkState::Connected);
    EXPECT_FALSE(box.IsOpen());
    EXPECT_EQ(w.time.PlannedCount(), 1u) << "only the tick that was planned before";
}

struct PeriodWorld : ConsoleWorld {
    PeriodWorld() {
        auto set = std::make_unique<cTranslate>();
        set->m_FileName = "A";
        set->m_TypeCodes.push_back({"E1", 1, "Burglary", ""});
        auto object = std::make_unique<cIDCode>();
        object->m_IdCode = "1";
        set->m_IdCodes.push_back(std::move(object));
        translations.Add(std::move(set));
        rights.role = Role::StandAlone;
    }
    cIDCode& Object() { return *translations.Sets().at(0)->m_IdCodes.at(0); }
    NoObjectReplica objectReplica{};
    ServicePeriods periods{{folder.Tree(), objectViews, objectReplica, translationSettings, deeds}};
    RecordingCentre serving{&periods};
    PeriodBox box{{.translations = translations,
                   .centre = serving,
                   .captions = captions,
                   .clock = time,
                   .state = *this}};
};

TEST(PeriodBox, AnswersOnlyWithAnEndThatIsStillToCome) {
    PeriodWorld w;
    const OleDate now = w.time.Now();
    const struct {
        int start;
        int stop;
        bool isPeriod;
        bool isFromNow;
    } rows[] = {{0, 60, true, true},
                {60, 60, false, true},
                {90, 60, false, true},
                {-60, -30, false, false},
                {-60, 30, true, true}};
    for (const auto& row : rows) {
        w.box.Open("A", {"1"});
        w.box.SetTimes(now.PlusMinutes(row.start), now.PlusMinutes(row.stop));
        EXPECT_EQ(w.box.IsPeriodEnabled(), row.isPeriod) << row.start << " " << row.stop;
        EXPECT_EQ(w.box.IsFromNowEnabled(), row.isFromNow) << row.start << " " << row.stop;
        EXPECT_EQ(w.box.Notice().empty(), row.isPeriod);
    }
    w.box.ChoosePeriod();
    EXPECT_EQ(w.Object().m_ServiceMode, 2);
    EXPECT_EQ(w.Object().m_ServicePeriodEnd, now.PlusMinutes(30));
    EXPECT_FALSE(w.box.IsOpen());
    w.box.Open("A", {"1"});
    EXPECT_EQ(w.box.Stop(), now.PlusMinutes(30)) << "the object's own period is where it begins";
    w.box.ChooseFromNow();
    EXPECT_EQ(w.Object().m_ServiceMode, 1);
}

TEST(PeriodBox, ObjectThatIsGoneChangesNothing) {
    PeriodWorld w;
    w.box.Open("A", {"1"});
    w.translations.Clear();
    w.box.ChoosePeriod();
    EXPECT_EQ(w.box.Notice(), w.captions(3758));
    EXPECT_TRUE(w.box.IsOpen());
}

// "Around the clock" took all that were selected, a period only one of them.
TEST(PeriodBox, TakesAllThatAreSelectedOrNone) {
    PeriodWorld w;
    auto second = std::make_unique<cIDCode>();
    second->m_IdCode = "2";
    w.translations.Sets().at(0)->m_IdCodes.push_back(std::move(second));
    w.box.Open("A", {"1", "2"});
    EXPECT_NE(w.box.Title().find(w.captions(3788, {"2"})), Text::npos);
    EXPECT_FALSE(w.box.IsFromNowEnabled()) << "several take a reason";
    EXPECT_EQ(w.box.Notice(), w.captions(5101));
    w.box.SetReason(" Fire drill ");
    w.box.ChooseFromNow();
    EXPECT_EQ(w.serving.reason, "Fire drill") << "and it goes along";
    for (const auto& object : w.translations.Sets().at(0)->m_IdCodes) EXPECT_EQ(object->m_ServiceMode, 1);
    w.box.Open("A", {"1", "gone"});
    w.box.SetReason("Again");
    w.box.ChoosePeriod();
    EXPECT_EQ(w.Object().m_ServiceMode, 1) << "and says so instead";
    EXPECT_EQ(w.box.Notice(), w.captions(3758));
}

struct EditorWorld : ConsoleWorld {
    /// The built-in editor, unless a program of the file is there.
    struct Host final : EditorHost {
        explicit Host(const FileTree& dataFolder) : programs(dataFolder) {}
        bool StartProgram(const EditedFile& edited) override { return programs.Start(edited); }
        void NoteSaved(const Text& path) override { saved += path + ";"; }
        EditorPrograms programs;
        Text saved{};
    } host{folder.Tree()};
    FakeTextCheck check{};
    EditorBox editor{{.files = dataFiles,
                      .dialogs = dialogs,
                      .captions = captions,
                      .state = *this,
                      .host = host,
                      .check = check}};
};

TEST(EditorBox, TellsFaultsWhileOneTypesAndAsksBeforeASaveAddsOne) {
    EditorWorld w;
    w.folder.Write("Settings\\A.TypeCode", "this is wrong\r\n");
    w.editor.Open({.path = "Settings\\A.TypeCode"});
    ASSERT_EQ(w.editor.Faults().size(), 1u);
    w.editor.Type("first\r\nthis is wrong");
    w.editor.Save();
    EXPECT_TRUE(w.dialogs.questions.empty()) << "the file had it before";
    w.editor.Type("this is wrong\r\nso wrong");
    EXPECT_EQ(w.editor.Faults().size(), 1u) << "not with every key";
    EXPECT_FALSE(w.editor.CheckOn());
    EXPECT_EQ(w.editor.Faults().size(), 2u);
    w.editor.Save();
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_TRUE(w.editor.IsChanged());
    w.dialogs.answers = {true};
    w.editor.Save();
    EXPECT_FALSE(w.editor.IsChanged());
}

TEST(EditorBox, SavesWithoutGrowthAndNeverOverAStrangersText) {
    EditorWorld w;
    const EditedFile file{"Information\\A\\1.TXT", "Object", "no-such-program-anywhere"};
    w.editor.Open(file);
    ASSERT_TRUE(w.editor.IsOpen()) << "a program that is missing leaves it to the built-in editor";
    for (int i = 0; i < 3; ++i) {
        w.editor.Type("a\r\nb" + Text(i % 2 ? "\r\n" : ""));
        w.editor.Save();
        EXPECT_TRUE(w.editor.Notice().isGood);
        EXPECT_EQ(w.folder.Read("Information\\A\\1.TXT"), "a\r\nb\r\n");
    }
    w.folder.Write("Information\\A\\1.TXT", "theirs\r\n");
    w.editor.Type("mine");
    w.editor.Save();
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_EQ(w.folder.Read("Information\\A\\1.TXT"), "theirs\r\n");
    w.editor.Close();
    EXPECT_TRUE(w.editor.IsOpen()) << "an unsaved text is not dropped unasked";
    w.dialogs.answers = {true};
    w.editor.Close();
    EXPECT_FALSE(w.editor.IsOpen());
    w.dataFiles.isBlind = true;
    w.editor.Open(file);
    w.editor.Type("over what nobody has seen");
    EXPECT_FALSE(w.editor.MaySave());
    w.editor.Save();
    EXPECT_EQ(w.folder.Read("Information\\A\\1.TXT"), "theirs\r\n");
    w.dialogs.answers = {true};
    w.editor.Close();
    w.dataFiles.isBlind = false;
    w.rights = {Role::Client, 1};
    w.editor.Open(file);
    w.editor.Type("no right");
    w.editor.Save();
    EXPECT_EQ(w.folder.Read("Information\\A\\1.TXT"), "theirs\r\n");
}

TEST(SimulationBox, SpreadsAHundredEventsOverTurnsOfTheLoop) {
    PeriodWorld w;
    RecordingIntake intake;
    const FakePorts ports;
    SimulationBox simulation(
        {.intake = intake, .translations = w.translations, .clock = w.time, .loop = w.time, .ports = ports});
    simulation.RaiseHundred();
    EXPECT_EQ(intake.events.size(), 10u);
    simulation.RaiseHundred();
    w.translations.Clear();
    w.time.Advance(0);
    ASSERT_EQ(intake.events.size(), 100u) << "once, and also when the objects go meanwhile";
    for (const IncomingEvent& event : intake.events) EXPECT_EQ(event.ExtraText, "SIMULERAD");
    simulation.Raise({.port = 9, .alarmCode = "12", .extraText = "fire", .prio = " 3 ", .type = "x"});
    EXPECT_EQ(intake.events.back().ExtraText, "SIMULERAD fire");
    EXPECT_EQ(intake.events.back().DefaultPrio, 3);
    EXPECT_EQ(intake.events.back().DefaultType, -1);
    EXPECT_EQ(intake.events.back().PortObject, nullptr);
}

TEST(AlarmPrinting, NumbersItsRowsWithRangeAndWidth) {
    const struct {
        const char* format;
        const char* filled;
    } rows[] = {{"[NUMBER::4] [DATE]", "12   [DATE]"},
                {"[number]", "12"},
                {"[NUMBER:0-0]x", "1x"},
                {"[NUMBERS] [NUMBER", "[NUMBERS] [NUMBER"},
                {"a[b", "a[b"}};
    for (const auto& row : rows) EXPECT_EQ(FillRowNumber(row.format, 12), row.filled) << row.format;
}

TEST(AlarmPrinting, PageOfItsOwnNeedsBothKeys) {
    ConsoleWorld w;
    AlarmPageSettings settings;
    AlarmPrinting printing({*w.store, w.captions, w.printerSettings, settings, w.printer});
    cAlarm& alarm = w.Raise("1", kStatusNew);
    alarm.m_TranslatedPrio = "3";
    const struct {
        const char* prio;
        const char* status;
        bool isPrinted;
    } rows[] = {{"", "", false},   {"-1", "", false},   {"", "0", false},   {"1-3", "4, 0", true},
                {"-1", "0", true}, {"4-9", "0", false}, {"3", "1,2", false}};
    for (const auto& row : rows) {
        settings.PrioToPrint = row.prio;
        settings.StatusToPrint = row.status;
        w.printer.printed.clear();
        printing.PrintAlarmPage(alarm);
        EXPECT_EQ(w.printer.printed.size(), row.isPrinted ? 1u : 0u) << row.prio << " " << row.status;
    }
}

TEST(ShiftList, TellsTheThreeThingsThatStayOpen) {
    PeriodWorld w;
    w.Raise("1", kStatusNew, "open one");
    w.Raise("1", kStatusAcknowledged, "ended one");
    w.Object().m_AliveTestIntervalHasExceeded = true;
    const ShiftList list({*w.store, w.translations, w.captions, w.time, w.printerSettings});
    std::vector<ShiftList::Part> parts = list.Parts();
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0].lines.size(), 1u);
    EXPECT_EQ(parts[1].lines.size(), 0u);
    EXPECT_EQ(parts[2].lines.size(), 1u);
    w.Object().m_ServiceMode = 3;
    parts = list.Parts();
    EXPECT_EQ(parts[1].lines.size(), 1u);
    EXPECT_EQ(parts[2].lines.size(), 0u) << "what is in service is not missed";
}

}  // namespace
}  // namespace nordkeep
