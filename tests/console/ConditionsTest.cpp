#include "tests/console/MainBoxWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

using enum ConditionKind;

class ConditionsTest : public testing::Test {
 protected:
    ConditionsTest() { world.Start(); }

    const std::vector<Condition>& Rows() { return world.Box().Wrong().Rows(); }
    Text Sentences() {
        Text all;
        for (const Condition& row : Rows()) all += row.sentence + "|";
        return all;
    }
    void Tick() { world.Tick(); }

    MainBoxWorld world{};
};

TEST_F(ConditionsTest, EachKindIsASentenceWithItsName) {
    const OleDate then = world.time.Now();
    struct Case {
        ConditionKind kind;
        const char* sentence;
        ConditionWeight weight;
        bool rings;
    };
    const Text at = ShortTime(then, then);
    const std::vector<Case> cases = {
        {LinesDisabled, "The lines are shut by a switch at the start: nothing is received",
         ConditionWeight::Fault, false},
        {NoLineOpen, "No line is open since %2: nothing is received", ConditionWeight::Fault, true},
        {LineFailed, "Line GSM %2: no answer since %2", ConditionWeight::Fault, true},
        {LineUnusable, "Line GSM %2: its settings make no line", ConditionWeight::Fault, false},
        {LineShut, "Line GSM %2: shut by its date since %2", ConditionWeight::Warning, false},
        {LineHeld, "Line GSM %2: closed by hand since %2", ConditionWeight::Warning, false},
        {LineMuted, "Line GSM %2: muted since %2, nothing is received", ConditionWeight::Warning, false},
        {LineQuiet, "Line GSM %2: no sign of life, told since %2", ConditionWeight::Warning, false},
        {SoundDead, "The alarm sound cannot be played: watch the window", ConditionWeight::Fault, false},
        {EventsUnsaved, "The disk takes nothing since %2: 7 events wait", ConditionWeight::Fault, true},
        {JournalFailed, "The journal cannot be written since %2", ConditionWeight::Fault, true},
        {PeerLost, "GSM %2 is not reached since %2", ConditionWeight::Fault, false},
        {Standby, "Works at the second server GSM %2", ConditionWeight::Warning, false},
        {ClockJumped, "The clock jumped by 7 s at %2", ConditionWeight::Warning, false},
        {FaultsInFiles, "7 faults in GSM %2", ConditionWeight::Warning, false},
        {NoLine, "No line has been set up yet, nothing is received: Edit, Settings, Lines",
         ConditionWeight::Fault, false},
        {InService, "In service: 7", ConditionWeight::Note, false},
    };
    for (const Case& c : cases) {
        world.around.conditions = {};
        Tick();
        world.around.isSounding = false;
        world.around.conditions = {{.kind = c.kind, .name = "GSM %2", .since = then, .count = 7}};
        Tick();
        ASSERT_EQ(Rows().size(), 1u) << c.sentence;
        Text expected = c.sentence;
        // The name is data: what looks like a place in it stays.
        for (std::size_t place = expected.find("since %2"); place != Text::npos;
             place = expected.find("since %2"))
            expected.replace(place + 6, 2, at);
        if (const std::size_t place = expected.find("s at %2"); place != Text::npos)
            expected.replace(place + 5, 2, at);
        EXPECT_EQ(Rows()[0].sentence, expected);
        EXPECT_EQ(Rows()[0].weight, c.weight) << c.sentence;
        EXPECT_EQ(world.around.isSounding, c.rings) << c.sentence;
    }
}

TEST_F(ConditionsTest, TheHeaviestStandFirstAndBeginOnce) {
    world.around.conditions = {{.kind = InService, .count = 4}, {.kind = LineFailed, .name = "One"}};
    Tick();
    const OleDate begin = world.time.Now();
    EXPECT_TRUE(world.around.isSounding);
    world.around.isSounding = false;
    world.time.Advance(61'000);
    world.around.conditions.push_back({.kind = LineFailed, .name = "Two"});
    Tick();
    ASSERT_EQ(Rows().size(), 3u);
    EXPECT_EQ(Rows()[0].name, "Two") << "the latest of a weight first";
    EXPECT_EQ(Rows()[1].since, begin) << "what goes on keeps its time";
    EXPECT_EQ(Rows()[2].kind, InService);
    EXPECT_TRUE(world.around.isSounding) << "another line rings anew";
    world.around.isSounding = false;
    world.around.conditions.pop_back();
    Tick();
    EXPECT_FALSE(world.around.isSounding) << "an end rings nothing";
}

TEST_F(ConditionsTest, AnEmptyListSaysWhyItIsEmpty) {
    EXPECT_EQ(world.Box().EmptyText(Tab::Unacked), "No new alarms");
    EXPECT_EQ(world.Box().EmptyText(Tab::Acked), "No old alarms");
    EXPECT_EQ(world.Box().EmptyText(Tab::IdCodes), "Choose a set on the left, and its rows stand here");
    world.around.conditions = {{.kind = InService, .count = 1}};
    Tick();
    EXPECT_EQ(world.Box().EmptyText(Tab::Unacked), "No new alarms");
    world.around.conditions = {{.kind = LineFailed, .name = "Modem"}};
    Tick();
    EXPECT_TRUE(world.Box().EmptyText(Tab::Unacked).starts_with("Line Modem: no answer since"));
    world.Raise();
    Tick();
    world.Box().Alarms().SetFilter(Tab::Unacked, "nothing");
    EXPECT_EQ(world.Box().EmptyText(Tab::Unacked), "The filter hides all rows: Esc shows them");
}

TEST_F(ConditionsTest, AnAlarmThatNobodyTouchesRingsAgainByItsPriority) {
    world.running.reset();
    world.WriteGeneral("EscalationTimes=60,,600\r\n");
    world.Start();
    cAlarm& urgent = world.Raise();
    cAlarm& minor = world.Raise();
    minor.m_TranslatedPrio = "3";
    world.SetStatus(minor, kStatusNew);
    const auto wait = [&](int seconds) {
        world.time.Advance(seconds * 1000);
        for (int i = 0; i < 5; ++i) Tick();
    };
    wait(59);
    EXPECT_TRUE(Rows().empty());
    wait(2);
    ASSERT_EQ(Rows().size(), 1u);
    EXPECT_EQ(Rows()[0].sentence, "1 alarm untouched for too long");
    EXPECT_TRUE(world.around.isSounding);
    EXPECT_TRUE(world.Box().IsToFlash());
    world.around.isSounding = false;
    wait(60);
    EXPECT_FALSE(world.around.isSounding) << "it has rung";
    world.SetStatus(urgent, kStatusCommented);
    wait(1);
    EXPECT_TRUE(Rows().empty());
    wait(600);
    EXPECT_TRUE(world.around.isSounding);
}

TEST_F(ConditionsTest, AClickLeadsToTheLine) {
    world.lineControl.lines = {{.name = "Port1", .description = "Receiver", .state = LineState::Open},
                               {.name = "Port2", .description = "Modem", .state = LineState::Failed}};
    world.around.conditions = {{.kind = LineFailed, .name = "Modem"}};
    for (int i = 0; i < 5; ++i) Tick();
    world.Box().OpenCondition(Rows().at(0));
    EXPECT_EQ(world.Box().CurrentTab(), Tab::Lines);
    EXPECT_EQ(world.Box().SelectionOf(Tab::Lines).current, "Port2");
    EXPECT_FALSE(world.Box().StateOf(Command::LineHold).isChecked);
    world.Box().Run(Command::LineHold);
    EXPECT_EQ(world.lineControl.calls, "hold Port2;");
}

TEST_F(ConditionsTest, AClickLeadsToTheFirstLineThatIsToBeMade) {
    world.around.conditions = {{.kind = NoLine}};
    Tick();
    world.Box().OpenCondition(Rows().at(0));
    EXPECT_TRUE(world.running->setup.IsOpen());
}

TEST_F(ConditionsTest, LinesAreOnTheirPageAndInTheTreeAtOnce) {
    world.lineControl.lines = {{.name = "Port1",
                                .description = "Receiver",
                                .kind = "TCPS 17601",
                                .state = LineState::Connected,
                                .since = world.time.Now(),
                                .telegramsToday = 3,
                                .caller = "10.0.0.5"}};
    for (int i = 0; i < 5; ++i) Tick();
    RowModel& rows = world.Box().ListOf(Tab::Lines);
    ASSERT_EQ(rows.RowCount(), 1);
    Text line;
    for (int column = 0; column < rows.ColumnCount(); ++column) line += rows.Cell(0, column) + "|";
    EXPECT_TRUE(line.starts_with("Receiver|TCPS 17601|connected|")) << line;
    EXPECT_TRUE(line.ends_with("|never|3|0|0|10.0.0.5|")) << line;
    PortTree& tree = world.Box().Objects().Tree();
    EXPECT_EQ(tree.At(tree.Roots().at(0)).line, LineState::Connected);
    world.lineControl.lines[0].state = LineState::Failed;
    for (int i = 0; i < 5; ++i) Tick();
    EXPECT_EQ(rows.Icon(0), Glyph::LineFailed);
    EXPECT_EQ(tree.At(tree.Roots().at(0)).line, LineState::Failed);
}

}  // namespace
}  // namespace nordkeep
