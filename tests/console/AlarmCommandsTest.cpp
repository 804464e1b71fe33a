#include "console/window/AlarmCommands.h"
#include "runtime/Fields.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class AlarmCommandsTest : public ::testing::Test {
 protected:
    std::vector<int> Statuses() const {
        std::vector<int> statuses;
        const EventList& events = world.store->Events();
        for (EventSequence at = events.Next(0); at != 0; at = events.Next(at))
            statuses.push_back(events.Find(at)->m_Status);
        return statuses;
    }
    using Numbers = std::vector<int>;

    ConsoleWorld world{};
    AlarmCommands commands{{.store = *world.store,
                            .handling = world.handling,
                            .dialogs = world.dialogs,
                            .language = world.language,
                            .clock = world.time,
                            .state = world}};
    std::vector<Text> keys{RowKey(world.Raise()), "99K", RowKey(world.Raise())};
};

TEST_F(AlarmCommandsTest, NothingHappensOnANo) {
    commands.AckAll();
    commands.CloseSelected(keys);
    commands.ArchiveSelected(keys);
    EXPECT_EQ(Statuses(), (Numbers{0, 0}));
    EXPECT_EQ(world.dialogs.questions.size(), 3u);
    EXPECT_EQ(world.desk.timesAllEnded, 0);
}

TEST_F(AlarmCommandsTest, EachCommandDoesItsDeedOnAYes) {
    world.dialogs.answers = {true, true, true};
    world.Raise();
    commands.CloseSelected(keys);
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 0}));
    commands.ArchiveSelected(keys);
    EXPECT_EQ(Statuses(), Numbers{0});
    commands.AckAll();
    EXPECT_EQ(Statuses(), Numbers{5});
}

TEST_F(AlarmCommandsTest, AQuestionNamesWhatItIsAbout) {
    world.language.LoadFrom("1053=End?\n5063=%1: %2\n5064=%1 alarms, highest %2\n");
    commands.CloseSelected(std::vector<Text>{keys[0]});
    commands.CloseSelected(keys);
    for (const Text& key : {keys[0], keys[2]})
        world.store->FindAlarmByKey(LeadingInt32(key))->m_TranslatedPrio = key == keys[0] ? "7" : "3";
    commands.CloseSelected(keys);
    EXPECT_EQ(world.dialogs.questions.at(0), "End?\r\n\r\nShop: ");
    EXPECT_EQ(world.dialogs.questions.at(2), "End?\r\n\r\n2 alarms, highest 3");
    EXPECT_EQ(world.dialogs.defaults, (std::vector{Answer::Yes, Answer::No, Answer::No}));
}

TEST_F(AlarmCommandsTest, TheEndOfSeveralCanBeTakenBackForTenSeconds) {
    world.dialogs.answers = {true, true, true, true};
    cAlarm& waiting = world.Raise("3", kStatusCommentedWaiting);
    commands.CloseSelected(std::vector<Text>{keys[0]});
    EXPECT_EQ(commands.UndoCount(), 0u) << "one is no accident";
    commands.AckAll();
    EXPECT_EQ(Statuses(), (Numbers{5, 5, 5}));
    EXPECT_EQ(commands.UndoCount(), 2u);
    EXPECT_EQ(commands.UndoSeconds(), 10);
    commands.Undo();
    EXPECT_EQ(Statuses(), (Numbers{5, 0, 3})) << "as they were";
    EXPECT_TRUE(waiting.m_AckedTime.IsNever());
    EXPECT_EQ(commands.UndoCount(), 0u);

    commands.AckAll();
    commands.ArchiveSelected(std::vector<Text>{keys[2]});
    world.time.Advance(10'000);
    EXPECT_EQ(commands.UndoCount(), 0u);
    commands.Undo();
    EXPECT_EQ(Statuses(), (Numbers{5, 5})) << "too late";
}

TEST_F(AlarmCommandsTest, WhatHasBeenDoneSinceIsNotTakenBack) {
    world.dialogs.answers = {true, true};
    commands.AckAll();
    commands.ArchiveSelected(std::vector<Text>{keys[2]});
    commands.Undo();
    EXPECT_EQ(Statuses(), Numbers{0});
}

}  // namespace
}  // namespace nordkeep
