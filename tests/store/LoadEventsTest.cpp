#include "runtime/Fields.h"
#include "store/EventLoad.h"
#include "tests/store/StoreWorld.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

/// The rule as it is told: each record is inserted behind all that are not later, and above the limit the
/// first of the list leaves.
struct LiteralList {
    void Insert(std::pair<int, Text> record, std::size_t limit) {
        const auto later = [&](const auto& other) { return other.first > record.first; };
        records.insert(std::find_if(records.begin(), records.end(), later), record);
        if (limit == 0 || records.size() <= limit) return;
        dropped += records.front().second + "\r\n";
        records.erase(records.begin());
    }
    std::vector<std::pair<int, Text>> records{};
    Text dropped{};
};

Text LinesOf(const Text& archive, char kind) {
    Text lines;
    for (const TextView line : Lines(archive)) {
        if (line.front() == kind) lines.append(line).append("\r\n");
    }
    return lines;
}

TEST(LoadEvents, GivesTheListThatInsertingOneByOneGives) {
    std::mt19937 random(7);
    for (const auto& [maxAlarms, maxTests] : {std::pair{0, 0}, {20, -99}, {1, 1}, {50, 5}, {1000, 1000}}) {
        StoreSettings settings;
        settings.MaxAlarms = maxAlarms;
        settings.MaxTestAlarms = maxTests;
        settings.MaxAlarmDays = 0;
        settings.ArchiveLogFileTimeFormat = "[ALARMCODETOSTORE]";
        StoreWorld world(settings);
        LiteralList ordinary, tests;
        for (std::int32_t number = 0; number < 120; ++number) {
            const int day = static_cast<int>(random() % 15);
            const bool isTest = random() % 3 == 0;
            const Text text = (isTest ? "t" : "o") + std::to_string(number);
            world.Put(number, AlarmAt(45300 + day, text, isTest ? "-1" : "1"));
            const int limit = isTest ? maxTests : maxAlarms;
            (isTest ? tests : ordinary).Insert({day, text}, static_cast<std::size_t>(std::max(limit, 0)));
        }
        world.store->LoadEvents();
        for (const auto& record : tests.records) ordinary.Insert(record, 0);
        Text expected;
        for (const auto& [day, text] : ordinary.records) expected += text + " ";
        EXPECT_EQ(world.Order(), expected) << maxAlarms << " " << maxTests;
        EXPECT_EQ(world.FileCount(), ordinary.records.size());
        EXPECT_EQ(world.views.rows.size(), ordinary.records.size());
        EXPECT_EQ(LinesOf(world.Archived(), 'o'), ordinary.dropped);
        EXPECT_EQ(LinesOf(world.Archived(), 't'), tests.dropped);
        const std::size_t dropped = 120 - ordinary.records.size();
        const std::vector<Text> log = {"dropped:" + std::to_string(dropped)};
        EXPECT_EQ(world.logged, dropped ? log : std::vector<Text>());
    }
}

TEST(LoadEvents, BadFilesAreNamedOnceAndStay) {
    StoreWorld world;
    const Text good = EventBytes(AlarmAt(45356, "good"), 0, 0);
    world.folder.Write("Data\\Events\\A0000001.eve", "");
    world.folder.Write("Data\\Events\\A0000002.eve", good.substr(0, good.size() - 1));
    world.folder.Write("Data\\Events\\A0000003.eve", Text(400, '\0'));
    world.folder.Write("Data\\Events\\a0000004.EVE", good + "old bytes behind it");
    world.folder.Write("Data\\Events\\A00x0005.eve", "skipped");
    world.folder.MakeFolders("Data\\Events\\A0000006.eve");
    world.store->LoadEvents();
    EXPECT_EQ(world.logged, std::vector<Text>{"bad:3 (A0000001.eve, A0000002.eve, A0000003.eve)"});
    EXPECT_EQ(world.Order(), "good ");
    EXPECT_EQ(world.FileCount(), 5u);

    cAlarm& alarm = *world.store->FindAlarmByKey(4);
    EXPECT_FALSE(alarm.m_IsStored);
    world.store->Update(alarm);
    EXPECT_EQ(world.FileCount(), 5u) << "the file keeps its spelling";
    world.store->RemoveAlarm(alarm);
    EXPECT_EQ(world.FileCount(), 4u);
}

TEST(LoadEvents, RemovesWhatIsOldOrMarked) {
    StoreWorld world;
    cAlarm old = AlarmAt(45325, "old");
    old.m_Status = kStatusNewWaiting;
    cAlarm marked = AlarmAt(45000, "marked");
    marked.m_Status = kStatusRemoved;
    world.Put(1, old);
    world.Put(2, marked);
    for (std::int32_t i = 0; i < 1010; ++i) world.Put(100 + i, AlarmAt(45326, "k"));
    world.store->LoadEvents();
    EXPECT_EQ(world.store->Events().Count(), 1010u);
    EXPECT_EQ(world.FileCount(), 1010u);
    EXPECT_EQ(world.logged, std::vector<Text>{"old:1"});
    EXPECT_TRUE(world.Archived().starts_with("2;")) << "archived with the status that it had";
    EXPECT_EQ(world.views.calls, "begin 1 2 end ");
    EXPECT_EQ(world.replica.sent, "");
    EXPECT_EQ(world.FileCount(), 1010u);
}

Text WithLength(Text record, std::size_t length) {
    for (std::size_t i = 0; i < 4; ++i) record[i] = static_cast<char>(length >> (8 * i) & 0xFF);
    return record;
}

TEST(LoadEvents, ConvertsTheFileOfEarlierVersionsOnce) {
    cAlarm removed = AlarmAt(45355, "removed");
    removed.m_Status = kStatusRemoved;
    Text file;
    for (const cAlarm& alarm : {AlarmAt(45356, "b"), removed, AlarmAt(45355, "a")}) {
        const Text record = EventBytes(alarm, 0, 10);
        file += WithLength(record, record.size());
    }
    const Text record = EventBytes(AlarmAt(45356, "loop"), 0, 0);
    struct Case {
        const char* name;
        Text tail;
        std::vector<Text> log;
    };
    for (const Case& c : {Case{"whole", "", {}}, Case{"cut", record.substr(0, 50), {"bad:1 (Events.DAT)"}},
                          Case{"no length", WithLength(record, 0), {"bad:1 (Events.DAT)"}},
                          Case{"backwards", WithLength(record, 0xFFFFFFF0), {"bad:1 (Events.DAT)"}}}) {
        StoreWorld world;
        world.folder.Write("Data\\Events.OLD", "an older one");
        world.folder.Write("Data\\events.dat", file + c.tail);
        world.store->LoadEvents();
        EXPECT_EQ(world.Order(), "a b ") << c.name;
        EXPECT_EQ(world.logged, c.log) << c.name;
        EXPECT_FALSE(world.folder.Exists("Data\\Events.DAT"));
        EXPECT_EQ(world.folder.Read("Data\\Events.OLD"), file + c.tail);
        world.store->LoadEvents();
        EXPECT_EQ(world.Order(), "a b ") << c.name;
        EXPECT_EQ(world.FileCount(), 2u);
    }
}

TEST(LoadEvents, KeepsWhatCouldNotBeWritten) {
    StoreWorld world;
    cAlarm& alarm = world.StoreNew(AlarmAt(45356, "written"));
    const Text path = "Data\\Events\\" + EventFileNameOf(alarm.m_FilePointer);
    RemoveFile(world.folder.Resolve(path));
    world.folder.MakeFolders(path);
    alarm.m_AlarmCodeToStore = "changed";
    world.store->Update(alarm);
    world.Put(1, AlarmAt(45355, "other"));
    world.store->LoadEvents();
    EXPECT_EQ(world.Order(), "other changed ");
    EXPECT_EQ(world.store->UnsavedCount(), 1u);
    EXPECT_EQ(world.views.rows.size(), 2u);
}

}  // namespace
}  // namespace nordkeep
