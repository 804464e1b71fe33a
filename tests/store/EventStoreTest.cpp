#include "tests/store/StoreWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(EventNumbers, AllAreGivenOutAndThenNone) {
    EventNumbers numbers(1, 3000);
    for (int i = 0; i < 3000; ++i) {
        const auto number = numbers.Draw();
        ASSERT_TRUE(number);
        EXPECT_FALSE(numbers.IsTaken(*number));
        EXPECT_TRUE(*number >= 0 && *number < 3000);
        numbers.Take(*number);
    }
    EXPECT_FALSE(numbers.Draw());
    numbers.Release(2999);
    EXPECT_EQ(numbers.Draw(), 2999);
}

TEST(EventNumbers, AreReadFromNamesInAnySpelling) {
    struct Case {
        const char* name;
        std::optional<std::int32_t> number;
    };
    for (const Case& c : {Case{"A0000001.eve", 1},
                          {"a9999999.EVE", 9999999},
                          {"A000001.eve", {}},
                          {"A00000001.eve", {}},
                          {"A000000x.eve", {}},
                          {"B0000001.eve", {}},
                          {"A-000001.eve", {}},
                          {"A0000001.ev", {}},
                          {"A0000001.eve~", {}},
                          {"", {}}}) {
        EXPECT_EQ(EventNumberOf(c.name), c.number) << c.name;
    }
    EXPECT_EQ(EventFileNameOf(42), "A0000042.eve");
}

TEST(EventFolder, NeverGivesOutANumberThatAnyFileHas) {
    TempFolder folder;
    for (const char* name : {"a0000001.EVE", "A0000002.eve", "a0000002.eve", "A0000003.eve"}) {
        folder.Write("Data\\Events\\x", "");
        ASSERT_TRUE(WriteFile(folder.Resolve("Data\\Events") + "/" + name, "not an event"));
    }
    EventFolder events(folder.Tree(), 1);
    Text seen;
    for (const EventFileName& file : events.List()) seen += file.name + (file.isSpare ? "- " : " ");
    EXPECT_EQ(seen, "a0000001.EVE A0000002.eve a0000002.eve- A0000003.eve ");
    EXPECT_TRUE(events.PathOf(1).ends_with("/a0000001.EVE"));
    EXPECT_TRUE(events.PathOf(2).ends_with("/A0000002.eve"));
    const auto number = events.GetFreeEventFileNumber();
    ASSERT_TRUE(number);
    // What is put there by hand later is seen too: the same seed draws the same number again.
    ASSERT_TRUE(WriteFile(events.PathOf(*number), "late"));
    EventFolder again(folder.Tree(), 1);
    EXPECT_NE(again.GetFreeEventFileNumber(), number);
}

TEST(EventStore, ANewEventIsToldThenWrittenAndEveryChangeFollows) {
    StoreWorld world;
    cAlarm& alarm = world.StoreNew(AlarmAt(45356, "first"));
    EXPECT_EQ(world.replica.sent, "8:0n ") << "sent before it is stored";
    EXPECT_TRUE(alarm.m_IsStored);
    EXPECT_EQ(world.OnDisk(alarm.m_FilePointer)->m_AlarmCodeToStore, "first");
    EXPECT_EQ(world.store->FindAlarmByKey(alarm.m_FilePointer), &alarm);
    EXPECT_EQ(world.views.rows.size(), 1u);

    const Text path = "Data\\Events\\" + EventFileNameOf(alarm.m_FilePointer);
    const Text before = world.folder.Read(path);
    alarm.m_AlarmCodeToStore = "1st";
    alarm.m_Status = kStatusAcknowledged;
    world.store->Update(alarm);
    const Text after = world.folder.Read(path);
    EXPECT_EQ(after.size(), before.size()) << "a shorter record leaves old bytes behind it";
    EXPECT_EQ(after.substr(after.size() - 2), before.substr(before.size() - 2));
    EXPECT_EQ(world.OnDisk(alarm.m_FilePointer)->m_AlarmCodeToStore, "1st");
    EXPECT_TRUE(world.store->Events().Unacknowledged().empty());

    world.store->RemoveAlarm(alarm);
    EXPECT_EQ(world.replica.sent, "8:0n 7:5s 7:-1s ");
    EXPECT_EQ(world.FileCount(), 0u);
    EXPECT_TRUE(world.views.rows.empty());
    EXPECT_EQ(world.store->Events().Count(), 0u);
    EXPECT_TRUE(world.Archived().starts_with("5;0;00:00:00;00:00:00;2024-03-05;1st;;;;1;"))
        << world.Archived();
    EXPECT_TRUE(world.Archived().ends_with(";   ;0;;;;;;0;;;;;\r\n")) << world.Archived();

    cAlarm gone = AlarmAt(45356);
    gone.m_FilePointer = 5;
    gone.m_Status = kStatusRemoved;
    world.store->Update(gone);
    EXPECT_TRUE(world.logged.empty()) << "a file that is not there ends quietly";
}

TEST(EventStore, AClientWritesNothing) {
    StoreWorld world({}, Role::Client);
    world.replica.writesFiles = false;
    cAlarm& alarm = world.store->Append(std::make_unique<cAlarm>(AlarmAt(1)));
    world.store->LoadEvents();
    world.store->PruneOldAlarms();
    world.store->Update(alarm);
    EXPECT_EQ(world.store->GetNextAlarmId(), 0);
    world.store->RemoveAlarm(alarm);
    EXPECT_EQ(world.replica.sent, "7:0n 7:-1n ");
    EXPECT_EQ(world.FileCount(), 0u);
    EXPECT_EQ(world.Archived(), "");
    EXPECT_FALSE(world.folder.Exists("Settings\\Nordkeep.INI"));
}

TEST(EventStore, ArchivesInAFormatOfTheOperators) {
    StoreSettings settings;
    settings.ArchiveLogFileTimeFormat = "[DATE]|[TRPRIO]";
    settings.AlarmLogFileDateFormat = "YY-M-D";
    StoreWorld world(settings);
    cAlarm alarm = AlarmAt(1, "x", "7");
    alarm.m_TimeStamp = OleDate::FromCivil({2020, 3, 5});
    world.store->ArchiveToFile(alarm);
    EXPECT_EQ(world.Archived(), "20-3-5|7\r\n");
}

TEST(AlarmNumber, IsTakenFromTheFileEachTime) {
    struct Case {
        int width;
        const char* before;
        std::int32_t id;
        const char* after;
    };
    for (const Case& c : {Case{-1, "5", 0, "5"},
                          {0, "0", 0, "0"},
                          {0, "7", 7, "0"},
                          {4, "9998", 9998, "9999"},
                          {4, "9999", 9999, "0"},
                          {4, "12345", 12345, "0"},
                          {4, "rubbish", 0, "1"},
                          {12, "999999999", 999999999, "0"},
                          {4, "", 0, "1"}}) {
        StoreSettings settings;
        settings.WidthForNumber = c.width;
        StoreWorld world(settings);
        world.files.WriteIni("General", "NextAlarmId", c.before);
        EXPECT_EQ(world.store->GetNextAlarmId(), c.id) << c.width << " " << c.before;
        EXPECT_EQ(world.files.ReadIni("General", "NextAlarmId", ""), c.after) << c.width << " " << c.before;
    }
    StoreWorld world;
    EXPECT_EQ(world.store->GetNextAlarmId(), 0);
    EXPECT_EQ(world.store->GetNextAlarmId(), 1);
    world.folder.Write("Settings\\Nordkeep.INI", "[General]\r\nNextAlarmId=500\r\n; edited by hand\r\n");
    EXPECT_EQ(world.store->GetNextAlarmId(), 500);
}

TEST(Limits, NothingLeavesUntilFivePercentAbove) {
    struct Case {
        int maxAlarms, maxTests;
        int ordinary, tests;  // that come in, tests first
        std::size_t ordinaryKept, testsKept;
    };
    for (const Case& c : {Case{100, -99, 105, 50, 105, 50},
                          {100, -99, 106, 50, 100, 50},
                          {0, -99, 300, 9, 300, 9},
                          {100, 10, 105, 10, 105, 10},
                          {100, 20, 102, 22, 102, 20},
                          {100, 20, 106, 21, 100, 20},
                          {0, 20, 300, 21, 300, 21},
                          {1, 1, 5, 5, 1, 1}}) {
        StoreSettings settings;
        settings.MaxAlarms = c.maxAlarms;
        settings.MaxTestAlarms = c.maxTests;
        StoreWorld world(settings);
        for (int i = 0; i < c.tests; ++i) world.StoreNew(AlarmAt(45356, "t", "-1"));
        for (int i = 0; i < c.ordinary; ++i) world.StoreNew(AlarmAt(45356, std::to_string(i)));
        world.RemoveAll();
        const EventList& events = world.store->Events();
        EXPECT_EQ(events.OrdinaryAlarms().size(), c.ordinaryKept) << c.maxAlarms << " " << c.maxTests;
        EXPECT_EQ(events.TestAlarms().size(), c.testsKept) << c.maxAlarms << " " << c.maxTests;
        EXPECT_EQ(world.FileCount(), c.ordinaryKept + c.testsKept);
        EXPECT_EQ(events.Find(*events.OrdinaryAlarms().rbegin())->m_AlarmCodeToStore,
                  std::to_string(c.ordinary - 1));
    }
}

TEST(Limits, TestAlarmsAreKnownByTheirPriority) {
    struct Case {
        int resetTimerPrio;
        const char* prio;
        bool isTest;
    };
    for (const Case& c : {Case{9999, "-1", true},
                          {9999, " -1", false},
                          {9999, "9999", false},
                          {9999, "", false},
                          {7, "07", true},
                          {7, "7x", true},
                          {7, "77", false},
                          {0, "", true},
                          {0, "x", true}}) {
        StoreSettings settings;
        settings.AliveTest2ResetTimerPrio = c.resetTimerPrio;
        EXPECT_EQ(IsTestAlarm(AlarmAt(1, "x", c.prio), settings), c.isTest) << c.resetTimerPrio << c.prio;
    }
}

TEST(Limits, WhatIsOlderThanItsDaysLeavesWhateverItsStatus) {
    StoreSettings settings;
    settings.MaxAlarmDays = 30;
    StoreWorld world(settings);
    for (const double days : {45326.0, 45325.9, 45356.0, 45000.0, 0.0}) {
        cAlarm alarm = AlarmAt(days, std::to_string(days).substr(0, 7));
        alarm.m_Status = days < 45000 ? kStatusNewWaiting : kStatusAcknowledged;
        world.StoreNew(alarm);
    }
    world.StoreNew(AlarmAt(1e300, "nonsense"));
    world.StoreNew(AlarmAt(2958465, "far"));
    world.store->PruneOldAlarms();
    world.RemoveAll();
    EXPECT_EQ(world.Order(), "45326.0 45356.0 nonsense far ") << "a damaged date is none of long ago";
    EXPECT_EQ(world.logged, std::vector<Text>{"pruned:3"});
    world.store->PruneOldAlarms();
    world.RemoveAll();
    EXPECT_EQ(world.logged.size(), 1u);
}

// A file system that gives the blocks of each file back to its device took 200 ms for a slice of a hundred.
TEST(Limits, ASliceIsAsLargeAsATurnHasTimeForItsDeletions) {
    StoreSettings settings;
    settings.MaxAlarmDays = 30;
    StoreWorld world(settings);
    for (int i = 0; i < 2000; ++i) world.StoreNew(AlarmAt(45000));
    world.store->PruneOldAlarms();
    std::size_t most = 0;
    std::size_t turns = 0;
    for (bool isMore = true; isMore; ++turns) {
        const std::size_t before = world.store->Events().Count();
        isMore = world.store->UpkeepSlice();
        const std::size_t removed = before - world.store->Events().Count();
        world.time.SleepAndPump(static_cast<int>(removed) * (turns < 40 ? 4 : 0));
        most = turns < 40 ? std::max(most, removed) : most;
    }
    EXPECT_LE(most, 12u) << "of 4 ms each";
    EXPECT_LT(turns, 75u) << "and as many as may be when they cost nothing";
    EXPECT_EQ(world.store->Events().Count(), 0u);
}

}  // namespace
}  // namespace nordkeep
