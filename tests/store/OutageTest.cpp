#include "tests/store/StoreWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// Brackets one event as the intake of a telegram does and notes in `replies` what its sender would get.
void Receive(StoreWorld& world, const cAlarm& alarm, Text& replies) {
    world.commit.Begin();
    world.StoreNew(alarm);
    world.commit.End([&replies](bool isStored) { replies += isStored ? "ACK " : "- "; });
}

/// A file where the folder of events should be: nothing can be written below it, whatever the user.
void BreakDisk(const StoreWorld& world) {
    std::filesystem::rename(world.folder.Resolve("Data\\Events"), world.folder.Path() + "/away");
    world.folder.Write("Data\\Events", "in the way");
}

void MendDisk(const StoreWorld& world) {
    RemoveFile(world.folder.Resolve("Data\\Events"));
    std::filesystem::rename(world.folder.Path() + "/away", world.folder.Resolve("Data\\Events"));
}

TEST(Outage, IsLoggedAndToldOnceAndNothingIsLost) {
    StoreWorld world;
    Text replies;
    const std::vector<Text>& told = world.outage.told;
    // The system's own alarm about it cannot be stored either, and must not lead to the next one.
    world.outage.onAlarm = [&] { world.StoreNew(AlarmAt(45356, "own")); };
    Receive(world, AlarmAt(45356, "a"), replies);
    world.commit.Commit();
    cAlarm& changed = *world.store->Events().Find(world.store->Events().Next(0));

    BreakDisk(world);
    Receive(world, AlarmAt(45356, "b"), replies);
    Receive(world, AlarmAt(45356, "c"), replies);
    EXPECT_TRUE(told.empty()) << "told inside the intake of an event";
    world.commit.Commit();
    changed.m_Status = kStatusAcknowledged;
    world.store->Update(changed);
    for (int i = 0; i < 3; ++i) {
        world.store->RetryFailedWrites();
        world.commit.Commit();
    }
    EXPECT_EQ(replies, "ACK - - ");
    ASSERT_EQ(told.size(), 1u);
    EXPECT_NE(told[0].find("Events"), Text::npos) << told[0];
    EXPECT_EQ(world.logged, told);
    EXPECT_EQ(world.Order(), "a b c own ");
    EXPECT_EQ(world.store->UnsavedCount(), 4u);

    MendDisk(world);
    world.store->RetryFailedWrites();
    EXPECT_EQ(world.logged.size(), 1u) << "not over before it is synchronised";
    world.commit.Commit();
    EXPECT_EQ(world.logged.back(), "again:4");
    EXPECT_EQ(world.store->UnsavedCount(), 0u);
    EXPECT_EQ(world.FileCount(), 4u);
    EXPECT_EQ(world.OnDisk(changed.m_FilePointer)->m_Status, kStatusAcknowledged);

    Receive(world, AlarmAt(45356, "d"), replies);
    world.commit.Commit();
    EXPECT_EQ(replies, "ACK - - ACK ");
    EXPECT_EQ(world.logged.size(), 2u);
    BreakDisk(world);
    Receive(world, AlarmAt(45356, "e"), replies);
    world.commit.Commit();
    EXPECT_EQ(told.size(), 2u) << "the next outage is told again";
}

TEST(Outage, AFailedSynchronisationCountsForEverythingWrittenBefore) {
    StoreWorld world;
    Text replies;
    Receive(world, AlarmAt(45356, "a"), replies);
    Receive(world, AlarmAt(45356, "b"), replies);
    // Written at the end of the turn, and then the folder of the new files cannot be synchronised.
    world.disk.onSynchronise = [&] { BreakDisk(world); };
    world.commit.Begin();
    world.commit.Commit();
    world.disk.onSynchronise = {};
    world.commit.End([&replies](bool isStored) { replies += isStored ? "late " : "late- "; });
    EXPECT_EQ(replies, "- - ");
    EXPECT_EQ(world.store->UnsavedCount(), 2u);
    MendDisk(world);
    world.store->RetryFailedWrites();
    world.commit.Commit();
    EXPECT_EQ(replies, "- - late- ") << "a telegram in hand may have been part of it";
    EXPECT_EQ(world.logged.back(), "again:2");
}

TEST(Outage, OneBadFileHoldsUpNoOther) {
    StoreWorld world;
    std::vector<cAlarm*> alarms;
    for (int i = 0; i < 20; ++i) alarms.push_back(&world.StoreNew(AlarmAt(45356, std::to_string(i))));
    world.commit.Commit();
    // A few files whose place is taken for good.
    for (int i = 0; i < 5; ++i) {
        const NativePath path = world.folder.Resolve(
            "Data\\Events\\" + EventFileNameOf(alarms[static_cast<std::size_t>(i)]->m_FilePointer));
        RemoveFile(path);
        MakeFolder(path);
    }
    for (cAlarm* alarm : alarms) {
        alarm->m_Status = kStatusCommented;
        world.store->Update(*alarm);
    }
    world.commit.Commit();
    EXPECT_EQ(world.store->UnsavedCount(), 5u);
    BreakDisk(world);
    for (cAlarm* alarm : alarms) world.store->Update(*alarm);
    world.commit.Commit();
    EXPECT_EQ(world.store->UnsavedCount(), 20u);
    MendDisk(world);
    for (int i = 0; i < 10; ++i) world.store->RetryFailedWrites();
    world.commit.Commit();
    EXPECT_EQ(world.store->UnsavedCount(), 5u);
    EXPECT_EQ(world.OnDisk(alarms[19]->m_FilePointer)->m_Status, kStatusCommented);
    world.store->RemoveAlarm(*alarms[0]);
    world.commit.Commit();
    EXPECT_EQ(world.store->UnsavedCount(), 4u) << "what has left the store is not tried again";
}

TEST(Outage, ALostFolderIsMadeAgain) {
    StoreWorld world;
    world.StoreNew(AlarmAt(45356, "a"));
    world.commit.Commit();
    std::filesystem::remove_all(world.folder.Resolve("Data"));
    cAlarm& alarm = world.StoreNew(AlarmAt(45356, "b"));
    world.commit.Commit();
    world.store->RetryFailedWrites();
    world.commit.Commit();
    EXPECT_EQ(world.OnDisk(alarm.m_FilePointer)->m_AlarmCodeToStore, "b");
    EXPECT_EQ(world.logged.back(), "again:1");
}

TEST(Outage, AnArchiveThatCannotBeWrittenCostsNoLineAndNoReply) {
    StoreSettings settings;
    settings.MaxAlarms = 1;
    settings.ArchiveLogFileTimeFormat = "[ALARMCODETOSTORE]";
    StoreWorld world(settings);
    Text replies;
    world.folder.MakeFolders("Data\\Archive.TXT");
    for (const char* text : {"a", "b", "c"}) Receive(world, AlarmAt(45356, text), replies);
    world.commit.Commit();
    EXPECT_EQ(replies, "ACK ACK ACK ");
    EXPECT_EQ(world.logged, std::vector<Text>{"failed:Data\\Archive.TXT"});
    RemoveFolder(world.folder.Resolve("Data\\Archive.TXT"));
    world.store->RetryFailedWrites();
    EXPECT_EQ(world.Archived(), "a\r\nb\r\n");
    Receive(world, AlarmAt(45356, "d"), replies);
    EXPECT_EQ(world.Archived(), "a\r\nb\r\nc\r\n");
    EXPECT_EQ(world.logged.size(), 1u);
}

TEST(EventCommit, RepliesLeaveTogetherInOrderAndAskForOneTurn) {
    TempFolder folder;
    std::size_t requests = 0;
    DurableFiles disk;
    EventCommit commit(disk, [&] { ++requests; });
    Text replies;
    const auto reply = [&](const char* name) {
        return [&replies, name](bool isStored) { replies += Text(name) + (isStored ? "+ " : "- "); };
    };
    const auto write = [&](const char* name) {
        commit.Change({.kind = FileChange::Kind::WriteNew, .path = folder.Resolve(name), .bytes = "x"});
    };
    commit.Begin();
    write("a");
    commit.Begin();  // a telegram that comes in while the first is still worked on
    write("a");      // a new file never overwrites another
    commit.End(reply("inner"));
    EXPECT_EQ(replies, "");
    commit.End(reply("outer"));
    commit.Begin();
    commit.NoteFailure();
    commit.End(reply("numberless"));
    EXPECT_EQ(requests, 1u);
    commit.Commit();
    EXPECT_EQ(replies, "inner- outer+ numberless- ");

    commit.Begin();
    commit.End([&](bool) {
        commit.Begin();
        write("b");
        commit.End(reply("next"));
    });
    commit.Commit();
    EXPECT_EQ(requests, 3u) << "what a reply leads to belongs to the next turn";
    EXPECT_EQ(replies, "inner- outer+ numberless- ");
    commit.Commit();
    EXPECT_EQ(replies, "inner- outer+ numberless- next+ ");
}

}  // namespace
}  // namespace nordkeep
