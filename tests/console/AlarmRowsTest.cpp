#include "runtime/Dates.h"
#include "tests/console/MainBoxWorld.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace nordkeep {
namespace {

/// Plays the told changes on a copy of the rows, so that a change told wrongly shows.
class MirroredRows final : private RowObserver {
 public:
    explicit MirroredRows(RowModel& rows) : rows_(rows) {
        rows_.SetObserver(this);
        Take();
    }
    ~MirroredRows() override { rows_.SetObserver(nullptr); }

    std::vector<Text> keys{};
    int rounds = 0;
    int resets = 0;
    int changes = 0;

 private:
    void Take() {
        keys.clear();
        for (int row = 0; row < rows_.RowCount(); ++row) keys.push_back(rows_.KeyOf(row));
    }
    void RoundBegins() override { ++rounds; }
    void RoundEnds() override {
        const std::vector<Text> played = std::exchange(keys, {});
        Take();
        EXPECT_EQ(played, keys);
        for (const Text& key : keys) EXPECT_EQ(keys[static_cast<std::size_t>(rows_.RowOf(key))], key);
    }
    void Before(const RowChange& change) override {
        ++changes;
        before_ = rows_.RowCount();
        if (change.kind == RowChange::Kind::Reset) ++resets;
    }
    void After(const RowChange& change) override {
        const auto at = [&](int place) { return keys.begin() + place; };
        switch (change.kind) {
            case RowChange::Kind::Insert:
                EXPECT_EQ(rows_.RowCount() - before_, change.last - change.first + 1);
                for (int row = change.first; row <= change.last; ++row)
                    keys.insert(at(row), rows_.KeyOf(row));
                break;
            case RowChange::Kind::Remove:
                EXPECT_EQ(before_ - rows_.RowCount(), change.last - change.first + 1);
                keys.erase(at(change.first), at(change.last) + 1);
                break;
            case RowChange::Kind::Move: {
                const Text key = keys[static_cast<std::size_t>(change.first)];
                keys.erase(at(change.first));
                keys.insert(at(change.to), key);
                break;
            }
            case RowChange::Kind::Reset:
                Take();
        }
    }
    void CellsChanged(int first, int last) override { EXPECT_TRUE(first <= last && last < rows_.RowCount()); }

    RowModel& rows_;
    int before_ = 0;
};

class AlarmRowsTest : public ::testing::Test {
 protected:
    AlarmRows& Unacked() { return world.running->lists.Unacked(); }
    AlarmRows& Acked() { return world.running->lists.Acked(); }
    void Start(const Text& columns = "TRTYPECODE,DATETIME,NUMBER") {
        world.WriteGeneral("", "[ListView_Unacked]\r\nColumns=" + columns +
                                   "\r\n[ListView_Acked]\r\nColumns=" + columns + "\r\n");
        world.Start();
    }
    Text Column(AlarmRows& rows, int column = 0) {
        Text all;
        for (int row = 0; row < rows.RowCount(); ++row) all += rows.Cell(row, column) + " ";
        return all;
    }

    MainBoxWorld world{};
};

TEST_F(AlarmRowsTest, EveryStatusHasItsRowInOneListOrNone) {
    Start();
    cAlarm& alarm = world.Raise();
    for (const int from : {0, 1, 2, 3, 4, 5, -1}) {
        for (const int to : {0, 1, 2, 3, 4, 5, -1}) {
            world.SetStatus(alarm, from);
            for (int again = 0; again < 2; ++again) {
                world.SetStatus(alarm, to);
                world.Tick();
                const bool isNew = to >= 0 && to <= 4;
                EXPECT_EQ(Unacked().RowCount(), isNew ? 1 : 0) << from << " to " << to;
                EXPECT_EQ(Acked().RowCount(), to == 5 ? 1 : 0) << from << " to " << to;
                EXPECT_EQ(alarm.m_ListItem == nullptr, to == -1);
                if (alarm.m_ListItem) {
                    EXPECT_EQ(alarm.m_ListItem->icon, to);
                }
            }
        }
    }
}

TEST_F(AlarmRowsTest, TellsExactlyWhatHasChangedWhateverTheOrder) {
    for (const auto& [sortColumn, filter] : {std::pair{-1, ""}, {0, ""}, {1, ""}, {0, "1"}}) {
        Start();
        MirroredRows unacked(Unacked());
        MirroredRows acked(Acked());
        if (sortColumn >= 0) Unacked().ClickHeading(sortColumn);
        Unacked().SetFilter(filter);
        std::mt19937 random(7);
        std::vector<cAlarm*> alarms;
        for (int step = 0; step < 400; ++step) {
            const auto choice = random() % 5;
            if (choice < 2 || alarms.empty()) {
                alarms.push_back(&world.Raise(std::to_string(random() % 30)));
            } else {
                const std::size_t place = random() % alarms.size();
                cAlarm& alarm = *alarms[place];
                if (choice == 2) {
                    alarm.m_TranslatedTypeCode = std::to_string(random() % 30);
                    alarm.m_TimeStamp = alarm.m_TimeStamp.PlusSeconds(random() % 100);
                }
                if (choice == 4) {
                    world.running->store.Forget(alarm);
                    alarms.erase(alarms.begin() + static_cast<std::ptrdiff_t>(place));
                } else {
                    world.SetStatus(alarm, static_cast<int>(random() % 6));
                }
            }
            if (random() % 4 == 0) world.Tick();
        }
        world.Tick();
        EXPECT_EQ(Unacked().Count() + Acked().Count(), alarms.size());
        EXPECT_LE(unacked.resets, 2) << "only sorting and filtering begin anew";
    }
}

TEST_F(AlarmRowsTest, ABurstIsOneRound) {
    Start();
    MirroredRows unacked(Unacked());
    MirroredRows acked(Acked());
    for (int i = 0; i < 1000; ++i) world.Raise();
    EXPECT_EQ(Unacked().RowCount(), 0) << "nothing is shown between two ticks";
    world.Tick();
    EXPECT_EQ(unacked.rounds, 1);
    EXPECT_EQ(unacked.changes, 1);
    EXPECT_EQ(unacked.resets, 0);
    world.Tick();
    EXPECT_EQ(unacked.rounds, 1) << "a list at rest is left alone";
    world.dialogs.answers = {true};
    world.Box().Run(Command::CloseAll);
    world.Tick();
    EXPECT_EQ(Unacked().RowCount() + Acked().RowCount(), 1000) << "what is still to be ended is still shown";
    while (world.running->core.handling.ContinueBulk()) continue;
    world.Tick();
    EXPECT_LE(unacked.rounds, 3);
    EXPECT_EQ(Unacked().RowCount(), 0);
    EXPECT_EQ(Acked().RowCount(), 1000);
}

TEST_F(AlarmRowsTest, SortsAsPeopleDoAndInThreeClicks) {
    world.WriteGeneral("AlarmDateFormat=DD/MM/YYYY\r\n", "[ListView_Unacked]\r\nColumns=TRTYPECODE,DATE\r\n");
    world.Start();
    for (const char* name : {"zone 10", "Zone 9", "\xC5mot", "alarm", "zone 10", "\xC4ng"}) {
        world.Raise(name).m_TranslatedTypeCode = name;
        world.time.Advance(20 * 86400000LL);
    }
    world.Tick();
    const Text arrival = "zone 10 Zone 9 \xC5mot alarm zone 10 \xC4ng ";
    EXPECT_EQ(Column(Unacked()), arrival);
    world.Box().ListOf(Tab::Unacked).ClickHeading(0);
    EXPECT_EQ(Column(Unacked()), "alarm Zone 9 zone 10 zone 10 \xC5mot \xC4ng ");
    cAlarm& late = world.Raise("brand");
    world.Tick();
    EXPECT_EQ(Unacked().RowOf(RowKey(late)), 1) << "a new row takes its place in a sorted list";
    Unacked().ClickHeading(0);
    EXPECT_EQ(Column(Unacked()), "\xC4ng \xC5mot zone 10 zone 10 Zone 9 brand alarm ");
    Unacked().ClickHeading(0);
    EXPECT_EQ(Column(Unacked()), arrival + "brand ");
    Unacked().ClickHeading(1);
    EXPECT_EQ(Column(Unacked()), arrival + "brand ") << "dates sort by time, not by their day";
}

TEST_F(AlarmRowsTest, ANewAlarmIsUnreadUntilItIsSelected) {
    Start();
    std::vector<cAlarm*> alarms;
    for (int i = 0; i < 6; ++i) alarms.push_back(&world.Raise());
    world.Tick();
    EXPECT_TRUE(Unacked().IsUnread(1));
    world.Click(Tab::Unacked, *alarms[1]);
    EXPECT_FALSE(Unacked().IsUnread(1));
    AlarmPage& page = world.Box().Alarms();
    page.NoteVisible(0, 2);
    EXPECT_EQ(page.NewsText(), "3 new below, highest priority 1 (Ctrl+Down)");
    page.FollowNews();
    EXPECT_EQ(page.SelectionOf(Tab::Unacked).current, RowKey(*alarms[3])) << "the nearest";
    page.NoteVisible(2, 3);
    EXPECT_EQ(page.NewsText(), "3 new above and below, highest priority 1 (Ctrl+Down)");
    world.Box().ShowTab(Tab::Acked);
    EXPECT_EQ(page.NewsText(), "4 new on the page New alarms, highest priority 1 (Ctrl+Down)");
    world.Box().ShowTab(Tab::Unacked);
    page.SetFilter(Tab::Unacked, "nothing");
    EXPECT_EQ(page.NewsText(), "4 new behind the filter, highest priority 1 (Ctrl+Down)");
    page.SetFilter(Tab::Unacked, "");
    page.NoteVisible(0, 5);
    EXPECT_EQ(page.NewsText(), "");
    world.SetStatus(*alarms[5], kStatusAcknowledged);
    world.Tick();
    EXPECT_FALSE(Acked().IsUnread(0)) << "what somebody has ended has been seen";
}

TEST_F(AlarmRowsTest, CountsWhatIsOpenByPriority) {
    Start("TRPRIO");
    cAlarm& first = world.Raise();
    world.Raise().m_TranslatedPrio = "3";
    cAlarm& odd = world.Raise();
    odd.m_TranslatedPrio = "x";
    for (cAlarm* alarm : {&first, &odd}) world.SetStatus(*alarm, kStatusCommented);
    using Counts = AlarmRows::PriorityCounts;
    EXPECT_EQ(Unacked().CountsByPriority(), (Counts{2, 0, 0, 1})) << "as the row was last told";
    first.m_TranslatedPrio = "2";
    world.SetStatus(first, kStatusCommented);
    EXPECT_EQ(Unacked().CountsByPriority(), (Counts{1, 1, 0, 1}));
    EXPECT_EQ(world.Box().Status().byPriority, "1: 1   2: 1   3: 0   other: 1");
    world.Tick();
    EXPECT_EQ(Unacked().CellSign(0, 0), Glyph::Priority2);
    EXPECT_EQ(Unacked().CellSign(2, 0), Glyph::None);
    world.SetStatus(first, kStatusAcknowledged);
    EXPECT_EQ(Unacked().CountsByPriority(), (Counts{1, 0, 0, 1}));
}

TEST_F(AlarmRowsTest, TheFilterWantsAllWordsAndHidesNothingElse) {
    Start("TRTYPECODE,CUSTOMER");
    world.Raise("Fire");
    cAlarm& other = world.Raise("Burglary");
    world.Tick();
    world.Box().Alarms().SetFilter(Tab::Unacked, "TOWN fire");
    EXPECT_EQ(Column(Unacked()), "Fire ");
    EXPECT_TRUE(world.Box().Wrong().Has(ConditionKind::Hidden)) << "a hidden alarm is told";
    other.m_TranslatedTypeCode = "Fire after burglary";
    world.SetStatus(other, 1);
    world.Tick();
    EXPECT_EQ(Unacked().RowCount(), 2);
    world.dialogs.answers = {true};
    world.Box().Alarms().SetFilter(Tab::Unacked, "nothing");
    world.Box().Run(Command::MenuAckAll);
    EXPECT_TRUE(world.dialogs.questions.back().ends_with("2 alarms, the highest priority is 1."));
    world.Tick();
    EXPECT_EQ(Acked().RowCount(), 2);
}

TEST_F(AlarmRowsTest, CellsShowWhatAnOperatorCanRead) {
    Start("STATUS,REPEATED,ACKDATE,NUMBER,EXTRATEXT,OBJECTCOMMENTS");
    world.folder.Write("Information\\Town\\1001.TXT", "Key at the gate\r\n");
    cAlarm& alarm = world.Raise("Fire", kStatusNewWaiting);
    alarm.m_Repeated = -1;
    alarm.m_ExtraText = Text("a\0b\r\n", 5);
    world.Tick();
    const char* expected[] = {"New, awaits reset", "Repeat", "", "1", "a b  ", "Key at the gate"};
    for (int column = 0; column < 6; ++column) EXPECT_EQ(Unacked().Cell(0, column), expected[column]);
    EXPECT_EQ(Unacked().Cell(0, 6), "");
    EXPECT_EQ(Unacked().Cell(1, 0), "");
    world.running->store.Forget(alarm);
    EXPECT_EQ(Unacked().Cell(0, 0), "") << "a row whose record has gone is blank until the next tick";
}

TEST_F(AlarmRowsTest, ColumnsAreReadLenientlyAndKeepTheirWidths) {
    world.WriteGeneral("",
                       "[ListView_Unacked]\r\nColumns= date,nosuch,Customer, URL,LINECARDNUMBER,,TIME\r\n"
                       "Column2=77\r\nColumn3=0\r\nColumn4=9999\r\n");
    world.Start();
    Text headings;
    for (int i = 0; i < Unacked().ColumnCount(); ++i) headings += Unacked().Heading(i) + ",";
    EXPECT_EQ(headings, "Date,Customer,Link,Line card,");
    EXPECT_EQ(Acked().ColumnCount(), 43);
    ColumnWidths widths(world.running->files, kUnackedSection, 30);
    EXPECT_EQ(widths.Width(0, 200), 200);
    EXPECT_EQ(widths.Width(1, 200), 77);
    EXPECT_EQ(widths.Width(2, 200), 40) << "no column is lost";
    EXPECT_EQ(widths.Width(3, 200), 4000);
    widths.Store(0, 5);
    EXPECT_EQ(widths.Width(0, 200), 30);
}

TEST_F(AlarmRowsTest, TheIconHasThePriorityOfTheConfiguredColumn) {
    for (const auto& [columns, prio, text] : {std::tuple{"PRIO,TRPRIO", "12", "12"},
                                              {"PRIO", "12", "7"},
                                              {"DATE", "12", ""},
                                              {"TRPRIO", "-1", ""},
                                              {"TRPRIO", "123", ""},
                                              {"TRPRIO", "", ""}}) {
        Start(columns);
        cAlarm& alarm = world.Raise();
        alarm.m_TranslatedPrio = prio;
        alarm.m_Prio = "7";
        world.Tick();
        EXPECT_EQ(Unacked().IconText(0), text) << columns << prio;
        EXPECT_EQ(Unacked().Icon(0), Glyph::StatusNew);
    }
}

TEST_F(AlarmRowsTest, TheOldestUnhandledAlarmIsKnownThroughAllChanges) {
    Start();
    EXPECT_TRUE(world.running->lists.OldestUnhandled().IsNever());
    cAlarm& first = world.Raise();
    world.time.Advance(61000);
    cAlarm& second = world.Raise("x", kStatusNewWaiting);
    const auto status = [&] { return world.Box().Status(); };
    EXPECT_EQ(status().oldest, "Oldest unhandled: 1:01");
    EXPECT_TRUE(status().isOverdue);
    world.SetStatus(first, kStatusCommented);
    EXPECT_EQ(status().oldest, "Oldest unhandled: 0 s");
    world.time.Set(world.time.Now().PlusMinutes(-60));
    EXPECT_EQ(status().oldest, "Oldest unhandled: 0 s") << "a clock that was set back makes no negative age";
    world.running->store.Forget(second);
    EXPECT_EQ(status().oldest, "");
    EXPECT_EQ(status().unacked, "New: 1");
    world.around.rights.isConnectionLost = true;
    world.Tick();
    EXPECT_EQ(status().unacked, "New: -") << "what nobody knows is no 0";
    EXPECT_EQ(status().acked.find('0'), Text::npos);
}

TEST(AlarmColors, FollowStatusOrPriorityByTheBehaviour) {
    AlarmColorSettings settings;
    for (std::size_t i = 0; i < 10; ++i)
        settings.pairs[i].background = Rgb{static_cast<std::uint8_t>(i), 0, 0};
    struct Row {
        AlarmColorBehaviour behaviour;
        int status;
        const char* priority;
        bool isIconOrPriority;
        int pair;  // -1: the theme
    };
    using enum AlarmColorBehaviour;
    for (const Row& row : {Row{None, 2, "1", true, -1}, Row{RowByStatus, 2, "1", false, 2},
                           Row{CellsByStatus, 2, "1", false, -1}, Row{CellsByStatus, 2, "1", true, 2},
                           Row{RowByPriority, 2, "7", false, 7}, Row{RowByPriority, 2, "12", false, 2},
                           Row{RowByPriority, 2, "-1", false, 2}, Row{RowByPriority, 2, "", false, 2},
                           Row{RowByStatus, 17, "", false, 0}}) {
        settings.behaviour = row.behaviour;
        const CellColors colors = ColorsOf(settings, {row.status, row.priority, row.isIconOrPriority});
        EXPECT_EQ(colors.background ? colors.background->red : -1, row.pair) << row.status << row.priority;
    }
}

TEST(AlarmRows, ToolTipSaysInFiveLinesWhoseWhatAndWhen) {
    MainBoxWorld world;
    world.WriteGeneral("ViewAlarmToolTip=1\r\n", "");
    world.Start();
    cAlarm& alarm = world.Raise("Fire");
    alarm.m_SmallComment = "on my way";
    AlarmRows& rows = world.Box().Alarms().ListOf(Tab::Unacked);
    world.Tick();
    const Text tip = rows.ToolTip(0, 3);
    EXPECT_EQ(std::ranges::count(tip, '\n'), 4) << tip;
    EXPECT_TRUE(tip.starts_with("School   1001   Town council\n1   Fire   01\nFire\n")) << tip;
    const Text when = FormatDate(alarm.m_TimeStamp, "YYYY-MM-DD HH:NN:SS");
    EXPECT_NE(tip.find("\n" + when + "   New"), Text::npos) << "two named pictures are no picture: " << tip;
    EXPECT_TRUE(tip.ends_with("\non my way")) << tip;
}

TEST(AlarmColors, AreReadFromHexadecimalPairs) {
    const CellColors pair = ParseColorPair("8C1d00; FFFFFF");
    EXPECT_EQ(pair.background, (Rgb{0x8C, 0x1D, 0}));
    for (const char* bad : {"8C1D00", "8C1D0;FFFFFF", "8C1D0G;FFFFFF", ";"}) {
        EXPECT_EQ(ParseColorPair(bad), (CellColors{Rgb{255, 255, 255}, Rgb{0, 0, 0}})) << bad;
    }
    EXPECT_EQ(ParseColorPair(""), CellColors());
    EXPECT_EQ(ParseColorNumber("255"), (Rgb{255, 0, 0})) << "red is the lowest byte";
    EXPECT_FALSE(ParseColorNumber(""));
    EXPECT_FALSE(ParseColorNumber("-1"));
    TempFolder folder;
    folder.MakeFolders("Settings");
    folder.Write("Settings\\Nordkeep.INI", "[General]\r\nAlarmColorBehaviour=1\r\n");
    const Settings files(folder.Tree());
    EXPECT_EQ(LoadAlarmColors(files, false).behaviour, AlarmColorBehaviour::RowByStatus);
    EXPECT_EQ(LoadAlarmColors(files, true).behaviour, AlarmColorBehaviour::None);
}

}  // namespace
}  // namespace nordkeep
