#include "runtime/Json.h"
#include "tests/doubles/TempFolder.h"
#include "tests/powercut/CoreRun.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace nordkeep {
namespace {

/// A core over its journal, run after run on one data folder.
class JournalledCoreTest : public ::testing::Test {
 protected:
    JournalledCoreTest() {
        for (const char* name : {"Data\\Events", "Settings", "LogFiles"}) folder.MakeFolders(name);
        folder.Write("Settings\\Nordkeep.INI", "[General]\r\nNextAlarmId=1\r\nSmallCommentSize=20\r\n");
        folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=Town\r\n");
        folder.Write("Settings\\Town.IDCode", "FORMAT=1,4,0,0,5,2\r\n1001;a\r\n1002;b\r\n");
        folder.Write("Settings\\Town.TypeCode", "01;1;Fire;02\r\n02;3;Over;\r\n");
    }

    /// Without a stop, each end of a run is a kill.
    CoreRun& Start() {
        run.reset();
        run.emplace(folder.Path(), time);
        run->log.SetRowListener([this](const LogRow& row) { lines.push_back(row.text); });
        return *run;
    }
    cAlarm& TakeIn(const Text& code) {
        run->core->intake.HandleIncomingEvent({.AlarmTime = time.Now(),
                                               .ProtocolType = "Robofon",
                                               .DefaultAlarmCode = code,
                                               .PortObject = &run->port,
                                               .TranslationNumberToUse = Protocol::Robofon});
        run->core->commit.Commit();
        return *run->Find(code);
    }
    /// "kind user station" of each deed, in order.
    std::vector<Text> Deeds() {
        std::vector<Text> deeds;
        run->core->commit.Commit();
        run->journal.Read(0, {}, [&](const JournalRow& row) {
            if (!row.station.empty()) deeds.push_back(row.kind + " " + row.user + " " + row.station);
        });
        return deeds;
    }

    TempFolder folder{};
    ManualTime time{};
    std::vector<Text> lines{};
    std::optional<CoreRun> run{};
};

TEST_F(JournalledCoreTest, AJournalThatCannotBeOpenedIsAnAlarmInTheListAtOnce) {
    const NativePath path = folder.Resolve("Data\\Journal.db");
    std::filesystem::create_directory(path);
    CoreRun& first = Start();
    ASSERT_EQ(first.core->store.Events().Count(), 1u) << "not at the next start only";
    const cAlarm& told = *first.core->store.Events().Find(first.core->store.Events().Next(0));
    EXPECT_NE(told.m_ExtraText.find("Journal.db"), Text::npos) << told.m_ExtraText;
    cAlarm& alarm = TakeIn("100101");
    EXPECT_TRUE(alarm.m_IsStored) << "its file is synchronised by itself";
    std::filesystem::remove(path);
    time.Advance(1000);
    TakeIn("100201");
    EXPECT_TRUE(first.journal.IsOpen()) << "mended without a restart";
    EXPECT_EQ(Start().core->store.Events().Count(), 3u);
}

// The files of the last events serve one start. Without an entry of their own, modes that a clean stop had
// saved were gone behind the first crash.
TEST_F(JournalledCoreTest, ServiceModesOutliveACleanStopAndTwoCrashes) {
    Start();
    const OleDate end = time.Now().PlusMinutes(600);
    run->core->servicePeriods.Set(run->Set(), run->Object(1), LogUntil(time.Now(), end), {"anna", kHere});
    run->core->commit.Commit();
    run->StopCleanly();
    for (int start = 0; start < 4; ++start) {
        Start();
        EXPECT_EQ(run->Object(1).m_ServiceMode, 1) << start;
        EXPECT_NEAR(run->Object(1).m_ServicePeriodEnd.Days(), end.Days(), 2e-5);
        EXPECT_EQ(run->Object(0).m_ServiceMode, 0);
        EXPECT_TRUE(ListFiles(folder.Resolve("Settings\\Temp")).empty());
    }
    run->core->servicePeriods.Set(run->Set(), run->Object(1), InUse(), {"anna", kHere});
    run->core->commit.Commit();
    EXPECT_EQ(Start().Object(1).m_ServiceMode, 0);
}

TEST_F(JournalledCoreTest, ServiceModesStayWhenOldEntriesGo) {
    Start();
    run->core->servicePeriods.Set(run->Set(), run->Object(0), LogOnly(), {"anna", kHere});
    run->core->commit.Commit();
    time.Advance(3 * 86'400'000LL);
    TakeIn("100101");
    run->core->commit.SynchroniseAll();
    TakeIn("100201");
    while (run->journal.Prune(1)) continue;
    EXPECT_EQ(Start().Object(0).m_ServiceMode, 3);
}

TEST_F(JournalledCoreTest, NotesWhoDidWhatAndWhatItWasBefore) {
    Start();
    cAlarm& first = TakeIn("100101");
    std::vector<std::int32_t> all = {first.m_FilePointer};
    for (const char* code : {"100102", "100201", "100202"}) all.push_back(TakeIn(code).m_FilePointer);
    lines.clear();
    run->core->handling.Comment(first, "called the owner");
    run->core->handling.End(first);
    run->core->handling.EndSeveral(std::span(all).subspan(1, 2));
    run->core->handling.EndAll();
    run->core->handling.Archive(std::span(all).first(2));
    run->core->deeds.Note(JournalKind::Login, {"bo", "10.0.0.7"}, {}, "Bo Ek");
    const std::vector<Text> expected = {"comment", "end", "end", "end", "end", "archive", "archive"};
    std::vector<Text> deeds = Deeds();
    ASSERT_EQ(deeds.size(), expected.size() + 1);
    EXPECT_EQ(deeds.back(), "login bo 10.0.0.7");
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(deeds[i], expected[i] + "  local");
    EXPECT_EQ(lines.size(), 5u) << "one line for a bulk deed";
    std::string before;
    run->journal.Read(0, {}, [&](const JournalRow& row) {
        if (row.kind == "end" && before.empty()) before = row.data;
    });
    EXPECT_EQ(ReadJsonObject(before)->String("comment"), "called the owner");
    EXPECT_EQ(ReadJsonObject(before)->Integer("status"), kStatusCommentedWaiting);
}

}  // namespace
}  // namespace nordkeep
