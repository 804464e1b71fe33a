#include "platform/sqlite/SqliteJournal.h"
#include "runtime/Json.h"
#include "store/EventFile.h"
#include "store/Journal.h"
#include "store/RecordJson.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace nordkeep {
namespace {

/// A journal in a data folder, opened anew as after a start.
class JournalTest : public ::testing::Test {
 protected:
    JournalTest() { folder.MakeFolders("Data"); }

    struct Run {
        explicit Run(JournalTest& test) : journal(file, test.folder.Tree(), test.time) {
            EXPECT_TRUE(journal.Open()) << journal.LastError();
        }
        SqliteJournal file{};
        Journal journal;
    };

    static std::vector<Text> KindsIn(Journal& journal, std::int64_t after = 0) {
        std::vector<Text> kinds;
        EXPECT_TRUE(journal.Read(after, {}, [&](const JournalRow& row) { kinds.push_back(row.kind); }));
        return kinds;
    }

    TempFolder folder{};
    ManualTime time{};
};

TEST_F(JournalTest, KeepsWhatWasCommittedAndNothingElse) {
    {
        Run run(*this);
        EXPECT_EQ(run.journal.Note({.kind = JournalKind::Event, .event = "A0000001", .status = 0}), 1);
        EXPECT_EQ(run.journal.Note({.kind = JournalKind::Changed, .event = "A0000001", .status = 5}), 2);
        EXPECT_TRUE(run.journal.Commit());
        run.journal.Note({.kind = JournalKind::Login});
    }
    Run run(*this);
    EXPECT_EQ(KindsIn(run.journal), (std::vector<Text>{"event", "change"}));
    EXPECT_EQ(KindsIn(run.journal, 1), (std::vector<Text>{"change"}));
    EXPECT_EQ(run.journal.Note({.kind = JournalKind::Event}), 3) << "ids go on rising";
    EXPECT_FALSE(run.journal.WasStoppedCleanly());
}

// Without it a night of steady load ended with a log of gigabytes.
TEST_F(JournalTest, TheLogOfWritesStaysShortAlsoWithoutAnIdleMoment) {
    Run run(*this);
    const NativePath log = folder.Resolve("Data\\Journal.db-wal");
    std::int64_t longest = 0;
    const auto write = [&] {
        run.journal.Note({.kind = JournalKind::Event, .data = std::string(200'000, 'x')});
        ASSERT_TRUE(run.journal.Commit()) << run.journal.LastError();
        run.journal.Tidy(true);
        longest = std::max(longest, StampOf(log).size);
    };
    for (int turn = 0; turn < 200; ++turn) write();
    const std::int64_t afterTwoRounds = longest;
    for (int turn = 0; turn < 200; ++turn) write();
    EXPECT_LE(longest, afterTwoRounds + afterTwoRounds / 4) << "used again from its front";
}

// Its log of writes is gathered in memory, up to a limit, and larger than what the library keeps there
// itself.
TEST_F(JournalTest, KeepsATurnThatIsLargerThanAnyMemoryOfIts) {
    {
        Run run(*this);
        for (int turn = 0; turn < 3; ++turn) {
            for (int i = 0; i < 600; ++i) {
                run.journal.Note({.kind = JournalKind::Event,
                                  .data = std::string(20'000, static_cast<char>('a' + i % 26))});
            }
            ASSERT_TRUE(run.journal.Commit()) << run.journal.LastError();
            while (run.journal.Tidy(false)) continue;
        }
    }
    Run run(*this);
    std::size_t good = 0;
    EXPECT_TRUE(run.journal.Read(0, {}, [&](const JournalRow& row) {
        const auto expected = static_cast<char>('a' + (row.id - 1) % 600 % 26);
        good += row.data == std::string(20'000, expected) ? 1 : 0;
    }));
    EXPECT_EQ(good, 1800u);
}

// The history of an end of 20,000 alarms began in its midst.
TEST_F(JournalTest, KeepsATurnOfMoreEntriesThanAnOutageGathers) {
    Run run(*this);
    for (int i = 0; i < 20'500; ++i) run.journal.Note({.kind = JournalKind::End});
    ASSERT_TRUE(run.journal.Commit());
    EXPECT_EQ(KindsIn(run.journal).size(), 20'500u);
}

TEST_F(JournalTest, GoesOnBehindSomebodyWhoHasWrittenToTheDatabase) {
    Run run(*this);
    SqliteJournal other;
    ASSERT_TRUE(other.Open(folder.Resolve("Data\\Journal.db")));
    for (int i = 0; i < 3; ++i) {
        run.journal.Note({.kind = JournalKind::Login});
        ASSERT_TRUE(run.journal.Commit()) << run.journal.LastError();
        const JournalMark mark[] = {{"by hand", i}};
        ASSERT_TRUE(other.Append({}, mark)) << other.LastError();
        EXPECT_EQ(other.LastId(), i + 1) << "and is seen at once";
    }
}

TEST_F(JournalTest, TellsItsEntriesInUtf8AndUtc) {
    Run run(*this);
    run.journal.Note({.kind = JournalKind::AliveTest,
                      .status = 2,
                      .priority = "3",
                      .object = "\xC5\xC4",
                      .type = "E1",
                      .port = "Port1",
                      .user = "anna",
                      .station = "local",
                      .text = "text",
                      .data = "{}"});
    ASSERT_TRUE(run.journal.Commit());
    JournalRow seen;
    run.journal.Read(0, {}, [&](const JournalRow& row) { seen = row; });
    EXPECT_EQ(seen.time, "2024-03-05T07:08:09.000Z");
    EXPECT_EQ(seen.kind, "alivetest");
    EXPECT_EQ(seen.object, "\xC3\x85\xC3\x84");
    EXPECT_EQ(seen.status, 2);
    EXPECT_EQ(seen.priority + seen.type + seen.port + seen.user + seen.station + seen.text + seen.data,
              "3E1Port1annalocaltext{}");
    EXPECT_EQ(UtcStamp(951'868'799'999), "2000-02-29T23:59:59.999Z");
}

TEST_F(JournalTest, WhatWaitsStaysUntilItIsDoneOverEveryStart) {
    std::int64_t first = 0;
    {
        Run run(*this);
        first = run.journal.NoteWaiting({.data = "{\"what\":\"a\"}"});
        run.journal.NoteWaiting({.data = "{\"what\":\"b\"}"});
        ASSERT_TRUE(run.journal.Commit());
        run.journal.NoteDone(first);  // with what came of it in a transaction that never was
    }
    {
        Run run(*this);
        ASSERT_EQ(run.journal.Waiting().size(), 2u);
        run.journal.NoteDone(first);
        ASSERT_TRUE(run.journal.Commit());
    }
    Run run(*this);
    ASSERT_EQ(run.journal.Waiting().size(), 1u);
    EXPECT_EQ(run.journal.Waiting().front().data, "{\"what\":\"b\"}");
}

TEST_F(JournalTest, MarksTellHowFarTheFilesAreSafeAndWhetherTheStopWasClean) {
    {
        Run run(*this);
        run.journal.Note({});
        run.journal.Note({});
        run.journal.NoteFilesSafe(1);
        ASSERT_TRUE(run.journal.Commit());
    }
    {
        Run run(*this);
        EXPECT_EQ(run.journal.FilesSafeUpTo(), 1);
        EXPECT_FALSE(run.journal.WasStoppedCleanly());
        EXPECT_FALSE(run.journal.NoteCleanStop()) << "the files do not hold everything yet";
        run.journal.NoteFilesSafe(2);
        ASSERT_TRUE(run.journal.NoteCleanStop());
    }
    {
        Run run(*this);
        EXPECT_EQ(run.journal.FilesSafeUpTo(), 2);
        EXPECT_TRUE(run.journal.WasStoppedCleanly());
        run.journal.Note({});
        ASSERT_TRUE(run.journal.Commit());
    }
    Run run(*this);
    EXPECT_FALSE(run.journal.WasStoppedCleanly()) << "something has happened since";
}

// What the files hold is then newer than what a start would play onto them.
TEST_F(JournalTest, RemembersThatTheFilesHaveGoneAheadOfIt) {
    {
        Run run(*this);
        run.journal.Note({});
        run.journal.Note({});
        ASSERT_TRUE(run.journal.Commit());
        ASSERT_TRUE(run.journal.NoteFilesAreNewer());
    }
    Run run(*this);
    EXPECT_EQ(run.journal.FilesSafeUpTo(), 2);
    run.journal.Note({});
    ASSERT_TRUE(run.journal.Commit());
    EXPECT_EQ(run.journal.FilesSafeUpTo(), 2) << "an entry of later is to be played again";
}

TEST_F(JournalTest, NeverTakesWhatItCannotReadForEmptyAndComesBackByItself) {
    folder.Write("Data\\Journal.db", "this is no database, and nobody may write over it");
    SqliteJournal file;
    Journal journal(file, folder.Tree(), time);
    EXPECT_FALSE(journal.Open());
    EXPECT_NE(journal.LastError(), "");
    const std::int64_t id = journal.Note({.kind = JournalKind::Comment});
    EXPECT_FALSE(journal.Commit());
    EXPECT_EQ(folder.Read("Data\\Journal.db"), "this is no database, and nobody may write over it");
    RemoveFile(folder.Resolve("Data\\Journal.db"));
    EXPECT_FALSE(journal.Commit()) << "not tried at every event";
    time.Advance(1000);
    EXPECT_TRUE(journal.Commit()) << journal.LastError();
    EXPECT_EQ(KindsIn(journal), (std::vector<Text>{"comment"}));
    EXPECT_EQ(journal.LastId(), id);
}

TEST_F(JournalTest, PrunesWhatIsOldButNothingThatIsStillNeeded) {
    Run run(*this);
    run.journal.Note({});
    const std::int64_t waiting = run.journal.NoteWaiting({.data = "{}"});
    run.journal.Note({});
    run.journal.NoteFilesSafe(3);
    ASSERT_TRUE(run.journal.Commit());
    time.Advance(3 * 86'400'000LL);
    run.journal.Note({.kind = JournalKind::Silence});
    ASSERT_TRUE(run.journal.Commit());
    run.journal.Prune(0);
    run.journal.Prune(4);
    EXPECT_EQ(KindsIn(run.journal).size(), 4u);
    run.journal.Prune(2);
    EXPECT_EQ(KindsIn(run.journal), (std::vector<Text>{"waiting", "event", "silence"}));
    run.journal.NoteDone(waiting);
    run.journal.NoteFilesSafe(10);
    ASSERT_TRUE(run.journal.Commit());
    run.journal.Prune(2);
    EXPECT_EQ(KindsIn(run.journal), (std::vector<Text>{"silence", "done"}));
}

// What a start writes from the journal must be the very bytes that the file had.
TEST(RecordJson, BringsEveryFieldOfAnEventFileBack) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        cAlarm alarm;
        const auto text = [&] {
            Text any;
            for (std::size_t i = random() % 12; i > 0; --i) any += static_cast<char>(random() % 256);
            return any;
        };
        alarm.m_Status = static_cast<int>(random() % 7) - 1;
        alarm.m_Repeated = static_cast<int>(random() % 3) - 1;
        alarm.m_SentToTorvex = -static_cast<int>(random() % 2);
        alarm.m_AlarmId = static_cast<std::int32_t>(random());
        alarm.m_TimeStamp = OleDate::FromDays(static_cast<double>(random()) / 7e4);
        alarm.m_ArrivedTime = OleDate::FromDays(45'000 + static_cast<double>(random()) / 3e9);
        for (const auto field : {&cAlarm::m_AlarmCodeToStore,
                                 &cAlarm::m_AlarmCode,
                                 &cAlarm::m_ExtraText,
                                 &cAlarm::m_ProtocolType,
                                 &cAlarm::m_TranslatedPrio,
                                 &cAlarm::m_TranslatedTypeCode,
                                 &cAlarm::m_TranslatedIDCode,
                                 &cAlarm::m_TranslatedMapName,
                                 &cAlarm::m_TranslationFile,
                                 &cAlarm::m_ResetTypeCode,
                                 &cAlarm::m_Prio,
                                 &cAlarm::m_TypeCode,
                                 &cAlarm::m_IdCode,
                                 &cAlarm::m_SIAStatus,
                                 &cAlarm::m_SIAAddress,
                                 &cAlarm::m_SIAModifier,
                                 &cAlarm::m_SmallComment,
                                 &cAlarm::m_Originator,
                                 &cAlarm::m_User,
                                 &cAlarm::m_PortDescription,
                                 &cAlarm::m_Customer,
                                 &cAlarm::m_LineCardNumber,
                                 &cAlarm::m_ResetIdCode,
                                 &cAlarm::m_ObjectInformation,
                                 &cAlarm::m_RawAlarmCode,
                                 &cAlarm::m_URL})
            alarm.*field = text();
        const auto back = ReadRecordJson(RecordJson(alarm));
        ASSERT_TRUE(back);
        ASSERT_EQ(EventBytes(*back, 0, 128), EventBytes(alarm, 0, 128)) << RecordJson(alarm);
    }
}

TEST(RecordJson, RefusesWhatIsNoRecord) {
    for (const char* text :
         {"", "{}", "[]", "{\"status\":1}", "{\"status\":1,\"arrivedTime\":2", "{\"a\":{\"b\":1}}"})
        EXPECT_FALSE(ReadRecordJson(text)) << text;
}

}  // namespace
}  // namespace nordkeep
