#include "tests/console/MainBoxWorld.h"
#include "tests/console/PlayedHistory.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class FindTest : public ::testing::Test {
 protected:
    FindTest() { world.Start(); }
    std::vector<Text> Find(const Text& text) {
        Box().SetText(text);
        while (Box().IsBusy()) world.time.Advance(10);
        std::vector<Text> names;
        for (int row = 0; row < Box().Rows().RowCount(); ++row) names.push_back(Box().Rows().Cell(row, 1));
        return names;
    }
    FindBox& Box() { return world.Box().Find(); }
    using Names = std::vector<Text>;

    MainBoxWorld world{};
};

TEST_F(FindTest, FindsObjectsAlarmsAndCommandsByTheirWords) {
    world.Raise("Water in cellar");
    world.Raise("Fire", kStatusAcknowledged);
    EXPECT_EQ(Find(""), Names{});
    EXPECT_EQ(Find("council"), Names{"School"}) << "the open alarm by its customer";
    EXPECT_EQ(Find("water"), (Names{"School", "Water works"}));
    EXPECT_EQ(Find("school town"), (Names{"School", "School"})) << "all words, in any field";
    EXPECT_EQ(Find("1002"), Names{"Shop"});
    EXPECT_EQ(Find("handover"), Names{"Shift handover"});
    EXPECT_EQ(Find("nothing has this name"), Names{});
    EXPECT_EQ(Box().Notice(), "Nothing found");
}

TEST_F(FindTest, DoesWhatTheRowIsAbout) {
    cAlarm& alarm = world.Raise("Water in cellar");
    world.Tick();
    Find("cellar");
    world.Box().ShowTab(Tab::Lines);
    Box().Activate(Box().Rows().KeyOf(0));
    EXPECT_EQ(world.Box().Tabs().current, Tab::Unacked);
    EXPECT_EQ(world.Box().SelectionOf(Tab::Unacked).current, RowKey(alarm));
    Find("settings");
    Box().Activate(Box().Rows().KeyOf(0));
    EXPECT_TRUE(world.running->setup.IsOpen());
    Find("1002");
    Box().Activate(Box().Rows().KeyOf(0));
    EXPECT_TRUE(world.running->card.IsOpen());
    EXPECT_EQ(world.running->card.Title(), "Object Shop");
}

// A key must cost the same with a million objects as with ten: the rest is looked through in slices.
TEST_F(FindTest, LooksThroughManyObjectsInSlices) {
    auto set = std::make_unique<cTranslate>();
    set->m_FileName = "Large";
    for (int i = 0; i < 20'000; ++i) {
        auto object = std::make_unique<cIDCode>();
        object->m_IdCode = "L" + std::to_string(i);
        object->m_ObjectName = i == 19'999 ? "The last of them" : "Flat";
        set->m_IdCodes.push_back(std::move(object));
    }
    set->index.Rebuild(*set);
    world.running->translations.Add(std::move(set));
    world.time.passesWithEachLookMs = 1;
    Box().SetText("last of");
    EXPECT_TRUE(Box().IsBusy());
    EXPECT_EQ(Box().Rows().RowCount(), 0);
    int slices = 0;
    for (; Box().IsBusy(); ++slices) world.time.Advance(10);
    EXPECT_GT(slices, 20);
    EXPECT_EQ(Box().Rows().RowCount(), 1);
    world.time.passesWithEachLookMs = 0;
    EXPECT_EQ(Find("flat").size(), FindBox::kMostHits);
    EXPECT_NE(Box().Notice().find("Type more"), Text::npos);
    EXPECT_EQ(Find("L777").front(), "Flat") << "the code itself stands first";
    EXPECT_EQ(Box().Rows().HitOf(Box().Rows().KeyOf(0))->idCode, "L777");
}

TEST_F(FindTest, SurvivesAReloadInTheMiddle) {
    world.time.passesWithEachLookMs = 5;
    Box().SetText("o");
    world.running->translations.Clear();
    world.time.Advance(1000);
    EXPECT_FALSE(Box().IsBusy());
    for (int row = 0; row < Box().Rows().RowCount(); ++row) Box().Activate(Box().Rows().KeyOf(row));
}

TEST_F(FindTest, ACardTellsWhatIsKnownAndFollowsIt) {
    world.folder.Write("Information\\Town\\1001.TXT", "Ring the janitor");
    PlayedHistory past(world.time);
    past.Note("A0000001", "1001");
    auto& running = *world.running;
    CardBox card({running.translations, running.store, running.dataFiles, running.captions, world.time,
                  world.around, running.centre, world.windows, running.period, running.history, past});
    card.Open("Town", "1001");
    world.time.Advance(100);
    card.Tick();
    ASSERT_EQ(card.Parts().size(), 4u);
    EXPECT_EQ(card.Instruction(), "Ring the janitor\r\n");
    EXPECT_EQ(card.Parts().at(2).lines.size(), 0u);
    EXPECT_EQ(card.Parts().at(3).lines.size(), 0u) << "an object of another set with this code";
    world.Raise("Fire");
    card.Tick();
    EXPECT_EQ(card.Parts().at(2).lines.size(), 1u);
    card.OpenSheet();
    card.OpenMap();
    card.AskService();
    EXPECT_TRUE(running.period.IsOpen());
    running.translations.Clear();
    card.Tick();
    EXPECT_FALSE(card.MayChange());
    card.ResetAliveTests();
    card.OpenMap();
}

}  // namespace
}  // namespace nordkeep
