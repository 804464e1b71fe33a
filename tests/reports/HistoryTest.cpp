#include "tests/reports/HistoryWorld.h"

namespace nordkeep {
namespace {

std::vector<Text> ObjectsOf(const HistoryPage& page) {
    std::vector<Text> objects;
    for (const HistoryEntry& entry : page.entries) objects.push_back(entry.object);
    return objects;
}

TEST(HistorySearch, FindsByEveryFieldNewestFirst) {
    HistoryWorld world;
    const OleDate begin = world.time.Now();
    for (int i = 1; i <= 5; ++i) {
        world.Come(std::to_string(i), i == 3 ? "E3" : "E1", std::to_string(i));
        world.time.Advance(60'000);
    }
    world.Do(JournalKind::Comment, 2, "anna", kStatusCommented);
    using What = HistoryQuery::What;
    EXPECT_EQ(ObjectsOf(world.Search({})), (std::vector<Text>{"2", "5", "4", "3", "2", "1"}));
    EXPECT_EQ(ObjectsOf(world.Search({.what = What::Alarms, .priority = "2-4"})),
              (std::vector<Text>{"4", "3", "2"}));
    EXPECT_EQ(ObjectsOf(world.Search({.object = "SHOP 4"})), std::vector<Text>{"4"});
    EXPECT_EQ(ObjectsOf(world.Search({.type = "e3"})), std::vector<Text>{"3"});
    EXPECT_EQ(ObjectsOf(world.Search({.doer = "ann"})), std::vector<Text>{"2"});
    EXPECT_EQ(world.Search({.text = "seen by"}).entries.at(0).comment, "seen by anna");
    EXPECT_EQ(ObjectsOf(world.Search({.from = begin.PlusMinutes(1), .to = begin.PlusMinutes(3)})),
              (std::vector<Text>{"3", "2"}));
    EXPECT_EQ(ObjectsOf(world.Search({.exactObject = "2"})), (std::vector<Text>{"2", "2"}));
    const HistoryPage history = world.Search({.event = "A0000002"});
    ASSERT_EQ(history.entries.size(), 3u) << "with the states that it had";
    EXPECT_EQ(history.entries.at(2).time, begin.PlusMinutes(1));
    EXPECT_TRUE(history.isEnd);
}

// Deeds that come back from a clock that was set must not be shown twice or left out.
TEST(HistorySearch, GoesThroughAllPagesOnceWhateverTheClockDid) {
    HistoryWorld world;
    std::map<Text, int> seen;
    for (int i = 0; i < 450; ++i) {
        world.Come(std::to_string(i % 3));
        world.time.Advance(20);
        if (i == 200) world.time.Set(world.time.Now().PlusMinutes(-60));
    }
    HistoryQuery query{.object = "Shop"};
    HistoryPage page;
    OleDate last = OleDate::FromDays(99999);
    do {
        page = world.Search(query);
        EXPECT_LE(page.entries.size(), HistoryWalk::kPage);
        for (const HistoryEntry& entry : page.entries) {
            EXPECT_LE(entry.time, last);
            last = entry.time;
            ++seen[entry.event];
        }
        query.after = ReadHistoryPlace(TextOf(page.reached));
    } while (!page.isEnd);
    EXPECT_EQ(seen.size(), 450u);
    for (const auto& [event, count] : seen) EXPECT_EQ(count, 1) << event;
}

TEST(HistorySearch, SaysSoWhenTheJournalCannotBeRead) {
    HistoryWorld world;
    world.Come("1");
    world.file.Close();
    EXPECT_FALSE(world.Search({}).isReadable);
    EXPECT_FALSE(world.Report(world.time.Now(), world.time.Now().PlusDays(1)).isReadable);
}

TEST(HistorySearch, StampsAndPlacesAreReadStrictly) {
    EXPECT_EQ(UtcStamp(UtcMsOf("2026-11-21T20:15:30.123Z")), "2026-11-21T20:15:30.123Z");
    for (const char* bad : {"", "2026-11-21", "2026-13-21T20:15:30.123Z", "2026-11-21T20:15:3x.123Z"})
        EXPECT_EQ(UtcMsOf(bad), 0) << bad;
    EXPECT_TRUE(ReadHistoryPlace("nonsense|3").IsBegin());
    EXPECT_EQ(ReadHistoryPlace("2026-11-21T20:15:30.123Z|7").id, 7);
}

TEST(AlarmFiguresTest, TellHowSoonPeopleWere) {
    HistoryWorld world;
    const OleDate begin = world.time.Now().Midnight();
    for (int i = 1; i <= 4; ++i) {
        world.Come("1", "E1", i == 4 ? "2" : "1");
        world.time.Advance(i * 10'000);
        world.Do(JournalKind::Comment, i, "anna", kStatusCommented);
        world.time.Advance(60'000);
        world.Do(JournalKind::End, i, i == 3 ? "bo" : "anna", kStatusAcknowledged);
    }
    world.Come("9", "E1", "-1");
    const AlarmFigures figures = world.Report(begin, begin.PlusDays(1));
    EXPECT_EQ(figures.alarms, 4) << "what raises no alarm is none";
    EXPECT_EQ(figures.all.touch, (Durations{4, 20, 40, 40}));
    EXPECT_EQ(figures.all.end, (Durations{4, 80, 100, 100}));
    ASSERT_EQ(figures.byPriority.size(), 2u);
    EXPECT_EQ(figures.byPriority.at(0).comment, (Durations{3, 20, 30, 30}));
    ASSERT_EQ(figures.byOperator.size(), 2u);
    EXPECT_EQ(figures.byOperator.at(1), (Reaction{.group = "bo", .end = {1, 90, 90, 90}}));
    EXPECT_EQ(figures.byHour.at(0).group, "07");
    EXPECT_EQ(figures.frequent.at(0), (AlarmSource{"1", "Shop 1", {}, 4}));
}

TEST(AlarmFiguresTest, AnEndThatWasTakenBackIsNone) {
    HistoryWorld world;
    const OleDate begin = world.time.Now().Midnight();
    world.Come("1");
    world.time.Advance(5000);
    world.Do(JournalKind::End, 1, "anna", kStatusAcknowledged);
    world.Do(JournalKind::Reopen, 1, "anna", kStatusNew);
    world.time.Advance(55'000);
    world.Do(JournalKind::End, 1, "bo", kStatusAcknowledged);
    const AlarmFigures figures = world.Report(begin, begin.PlusDays(1));
    EXPECT_EQ(figures.all.touch, (Durations{1, 5, 5, 5}));
    EXPECT_EQ(figures.all.end, (Durations{1, 60, 60, 60}));
}

TEST(AlarmFiguresTest, TellOfFloodsChatterAndWhatStays) {
    HistoryWorld world;
    const OleDate begin = world.time.Now().Midnight();
    for (int i = 0; i < 12; ++i) {
        world.Come(std::to_string(i % 4), "E1");
        world.time.Advance(5000);
    }
    world.time.Advance(3'600'000);
    for (int i = 1; i <= 11; ++i) world.Do(JournalKind::End, i, "anna", kStatusAcknowledged);
    world.time.Advance(24 * 3'600'000);
    const AlarmFigures figures = world.Report(begin, begin.PlusDays(1));
    EXPECT_EQ(figures.floods, 1);
    // From the eleventh alarm until the fifth newest of twelve is ten minutes old.
    EXPECT_EQ(figures.floodSeconds, 600 - 3 * 5);
    EXPECT_EQ(figures.WorstBin(), 12);
    EXPECT_EQ(figures.FloodShare(begin.PlusDays(2)), 585 * 1000 / 86400);
    EXPECT_EQ(figures.chattering.size(), 4u);
    ASSERT_EQ(figures.stale.size(), 1u) << "one is still open";
    EXPECT_EQ(figures.stale.at(0).object, "3");
    EXPECT_TRUE(figures.unknown.empty());
}

TEST(AlarmFiguresTest, AnUnusableSpanIsAnswered) {
    HistoryWorld world;
    world.Come("1");
    EXPECT_EQ(world.Report(world.time.Now().PlusDays(1), world.time.Now()).alarms, 0);
    EXPECT_EQ(world.Report(world.time.Now().PlusDays(-5000), world.time.Now().PlusDays(1)).alarms, 0);
}

}  // namespace
}  // namespace nordkeep
