#include "console/window/AlarmCommands.h"
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

}  // namespace
}  // namespace nordkeep
