#include "tests/store/StoreWorld.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nordkeep {
namespace {

struct ReloadWorld : StoreWorld {
    using StoreWorld::StoreWorld;
    Text PathOf(std::int32_t number) const { return "Data\\Events\\" + EventFileNameOf(number); }
    void Reload() {
        store->ReloadEvents();
        RemoveAll();
    }
    cAlarm& Named(TextView text) {
        const EventList& events = store->Events();
        for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
            if (events.Find(at)->m_AlarmCodeToStore == text) return *events.Find(at);
        }
        throw std::runtime_error("no such record");
    }
};

TEST(EventReload, FollowsWhatWasDoneToTheFilesByHand) {
    ReloadWorld world;
    world.Put(1, AlarmAt(45350, "a"));
    world.Put(2, AlarmAt(45352, "b"));
    world.Put(3, AlarmAt(45354, "c"));
    world.store->LoadEvents();
    ASSERT_EQ(world.Order(), "a b c ");
    const cAlarm* const untouched = world.store->FindAlarmByKey(3);
    world.replica.sent.clear();
    world.views.calls.clear();

    RemoveFile(world.folder.Resolve(world.PathOf(1)));
    cAlarm changed = AlarmAt(45352, "B");
    changed.m_Status = kStatusAcknowledged;
    world.Put(2, changed);
    world.Put(5, AlarmAt(45351, "early"));
    world.Put(6, AlarmAt(45353, "middle"));
    world.Put(7, AlarmAt(45353, "behind it"));
    world.Put(8, AlarmAt(45355, "late"));
    world.Put(9, AlarmAt(45000, "too old"));
    world.folder.Write("Data\\Events\\a0000010.EVE", EventBytes(AlarmAt(45355.5, "spelling"), 0, 0));
    world.folder.Write("Data\\Events\\A0000011.eve", "torn");
    world.Reload();

    EXPECT_EQ(world.Order(), "early B middle behind it c late spelling ");
    EXPECT_EQ(world.store->FindAlarmByKey(3), untouched) << "what has not changed stays where it is";
    EXPECT_EQ(world.views.rows.size(), 7u);
    EXPECT_EQ(world.views.rows.at(2), "B");
    EXPECT_EQ(world.logged, (std::vector<Text>{"old:1", "bad:1 (A0000011.eve)"}));
    EXPECT_NE(world.Archived().find("too old"), Text::npos);
    EXPECT_EQ(world.FileCount(), 8u) << "the torn file stays";
    // Changed and gone, then the five that are new: the other copies hear of it.
    EXPECT_EQ(world.replica.sent, "7:5n 7:-1n 8:0n 8:0n 8:0n 8:0n 8:0n ");
    EXPECT_EQ(world.store->Events().Unacknowledged().size(), 6u) << "the indexes follow";

    world.replica.sent.clear();
    world.logged.clear();
    world.Reload();
    EXPECT_EQ(world.Order(), "early B middle behind it c late spelling ");
    EXPECT_EQ(world.replica.sent, "") << "nothing was changed";
    EXPECT_EQ(world.logged, std::vector<Text>{"bad:1 (A0000011.eve)"});
}

// What cannot be read is not gone, and what is newer in memory is not to be lost by reading.
TEST(EventReload, KeepsWhatCannotBeReadOrHasNotReachedItsFile) {
    ReloadWorld world;
    world.Put(1, AlarmAt(45350, "unreadable"));
    world.Put(2, AlarmAt(45351, "torn"));
    world.Put(3, AlarmAt(45352, "unsaved"));
    world.store->LoadEvents();
    world.folder.Write(world.PathOf(2), "x");
    RemoveFile(world.folder.Resolve(world.PathOf(3)));
    world.folder.MakeFolders(world.PathOf(3));
    cAlarm& unsaved = world.Named("unsaved");
    unsaved.m_AlarmCodeToStore = "newer";
    world.store->Update(unsaved);
    world.commit.Commit();
    ASSERT_EQ(world.store->UnsavedCount(), 1u);
    RemoveFile(world.folder.Resolve(world.PathOf(1)));
    // A name that leads in a circle cannot be opened by anybody.
    const NativePath circle = world.folder.Resolve(world.PathOf(1));
    ASSERT_EQ(::symlink(circle.c_str(), circle.c_str()), 0);
    world.Reload();
    EXPECT_EQ(world.Order(), "unreadable torn newer ");
    EXPECT_EQ(world.views.rows.size(), 3u);

    // A whole folder that is away, as behind an unmount, says nothing about its files.
    const NativePath folder = world.folder.Resolve("Data\\Events");
    ASSERT_TRUE(RenameFile(folder, folder + "-away"));
    world.logged.clear();
    world.Reload();
    EXPECT_EQ(world.Order(), "unreadable torn newer ");
    EXPECT_EQ(world.logged, std::vector<Text>{"bad:1 (Data\\Events)"});
}

TEST(EventReload, TakesEventsInAndLosesRecordsBetweenItsSlices) {
    StoreSettings settings;
    settings.MaxAlarms = 40;
    ReloadWorld world(settings);
    for (std::int32_t i = 0; i < 30; ++i) world.Put(100 + i, AlarmAt(45340 + i / 10.0, "l"));
    world.store->LoadEvents();
    for (std::int32_t i = 0; i < 30; ++i) world.Put(200 + i, AlarmAt(45340.05 + i / 10.0, "found"));
    world.time.passesWithEachLookMs = 1;
    world.store->ReloadEvents();
    world.store->ReloadEvents();  // joins the first
    int slices = 0;
    for (bool isMore = true; isMore; ++slices) {
        isMore = world.store->UpkeepSlice();
        if (slices == 2) world.StoreNew(AlarmAt(45356, "new"));
        if (slices == 4) world.store->RemoveAlarm(*world.store->FindAlarmByKey(100));
        world.commit.Commit();
    }
    EXPECT_GT(slices, 5);
    EXPECT_EQ(world.store->Events().Count(), 40u) << "cut back to the limit";
    EXPECT_TRUE(world.Order().ends_with("l found l found new ")) << world.Order();
    EXPECT_EQ(world.FileCount(), 40u);
    EXPECT_EQ(world.logged, std::vector<Text>{"dropped:20"});
}

}  // namespace
}  // namespace nordkeep
