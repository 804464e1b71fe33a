#include "platform/sqlite/SqliteJournal.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace nordkeep {
namespace {

constexpr std::int64_t kRoom = 1 << 20;

/// The room that the log of writes gets before the first transaction.
class JournalRoomTest : public ::testing::Test {
 protected:
    struct Place {
        NativePath Database() const { return folder.Resolve("Journal.db"); }
        std::int64_t LogSize() const { return StampOf(folder.Resolve("Journal.db-wal")).size; }

        TempFolder folder{};
    };

    static void Append(SqliteJournal& journal, std::int64_t from, std::int64_t count) {
        for (std::int64_t id = from; id < from + count; ++id) {
            const JournalRow row{.id = id, .kind = "event", .data = std::string(3000, 'x')};
            ASSERT_TRUE(journal.Append({&row, 1}, {})) << journal.LastError();
        }
    }

    static std::int64_t Count(SqliteJournal& journal) {
        std::int64_t count = 0;
        EXPECT_TRUE(journal.Read(0, {}, 0, [&](const JournalRow& row) { count += row.id == count + 1; }));
        return count;
    }

    // What is in the memory of the one who writes goes with him.
    static void CopyAsCrashLeavesIt(const Place& from, const Place& to) {
        for (const char* name : {"Journal.db", "Journal.db-wal"})
            to.folder.Write(name, from.folder.Read(name));
    }

    Place place{};
};

TEST_F(JournalRoomTest, NoTransactionMakesTheLogLongerUntilItIsFull) {
    SqliteJournal journal(kRoom);
    ASSERT_TRUE(journal.Open(place.Database())) << journal.LastError();
    EXPECT_EQ(place.LogSize(), kRoom);
    Append(journal, 1, 60);
    EXPECT_EQ(place.LogSize(), kRoom);
    Append(journal, 61, 240);
    EXPECT_GT(place.LogSize(), kRoom);
    EXPECT_EQ(Count(journal), 300);
}

TEST_F(JournalRoomTest, ACrashLosesNothingOfWhatStandsBeforeTheRoom) {
    SqliteJournal journal(kRoom);
    ASSERT_TRUE(journal.Open(place.Database()));
    for (const std::int64_t room : {kRoom, 2 * kRoom}) {
        const std::int64_t known = Count(journal);
        Append(journal, known + 1, 20);
        const Place copy;
        CopyAsCrashLeavesIt(place, copy);
        SqliteJournal again(room);
        ASSERT_TRUE(again.Open(copy.Database())) << again.LastError();
        EXPECT_EQ(copy.LogSize(), room) << "lengthened, never shortened";
        EXPECT_EQ(Count(again), known + 20);
        Append(again, known + 21, 5);
        const Place second;
        CopyAsCrashLeavesIt(copy, second);
        SqliteJournal third;
        ASSERT_TRUE(third.Open(second.Database()));
        EXPECT_EQ(Count(third), known + 25);
    }
}

// An outage of the journal ends while telegrams come: they do not wait for sixteen megabytes.
TEST_F(JournalRoomTest, IsMadeAtTheStartOnly) {
    SqliteJournal journal(kRoom);
    ASSERT_TRUE(journal.Open(place.Database()));
    journal.Close();
    ASSERT_TRUE(journal.Open(place.Database()));
    EXPECT_LT(place.LogSize(), kRoom);
    Append(journal, 1, 1);
}

TEST_F(JournalRoomTest, AMediumThatDoesNotGiveItAllKeepsNothingOfIt) {
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{.rlim_cur = kRoom / 2, .rlim_max = limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    SqliteJournal journal(kRoom);
    EXPECT_TRUE(journal.Open(place.Database())) << journal.LastError();
    EXPECT_LT(place.LogSize(), kRoom / 8);
    Append(journal, 1, 20);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(Count(journal), 20);
}

}  // namespace
}  // namespace nordkeep
