#include "platform/sqlite/SqliteJournal.h"
#include "tests/ports/PortWorld.h"

namespace nordkeep {
namespace {

/// A port whose receiver sends events and their texts apart, over a journal that outlives each run.
class HeldTelegramTest : public PortWorld {
 protected:
    HeldTelegramTest() {
        folder.MakeFolders("Data");
        folder.MakeFolders("LogFiles");
        folder.Write("Settings\\Nordkeep.INI",
                     "[General]\r\nWaitForMLR2SIAASCIIBlockTimeout=5\r\nSIAAsciiBlockAsSeparateEvent=0\r\n");
        WritePort("MessageFormat=13\r\n");
    }
    void WritePort(const Text& more) {
        folder.Write("Settings\\Port1.ini", "[General]\r\nPortType=TCPS\r\nPortNumber=4001\r\n" + more);
    }

    /// From a start to a kill.
    struct Run {
        explicit Run(HeldTelegramTest& test) : world(test), journal(file, test.folder.Tree(), test.time) {
            EXPECT_TRUE(journal.Open());
            world.intake.events.clear();
            world.firstSocket = world.sockets.made.size();
            ports.Discover(world.PartsWith(commit));
            ports.TakeUpHeld(world.PartsWith(commit));
            commit.Commit();
        }
        FakeWinsock& Connect() {
            Tick();
            world.sockets.At(world.firstSocket).CallIn();
            return world.sockets.At(world.firstSocket + 1);
        }
        void Tick() {
            world.time.Advance(1000);
            ports.Tick(1000, world.conditions);
            commit.Commit();
        }
        HeldTelegramTest& world;
        SqliteJournal file{};
        Journal journal;
        DurableFiles runDisk{};
        EventCommit commit{runDisk, [] {}, &journal};
        PortList ports{};
    };

    std::size_t firstSocket = 0;
};

TEST_F(HeldTelegramTest, IsAnsweredWhenTheJournalHasItAndWaitsOnBehindAKill) {
    {
        Run run(*this);
        FakeWinsock& caller = run.Connect();
        caller.Arrive("S011[#1|NBA01]\x14");
        EXPECT_EQ(caller.sent, "") << "what is answered must not live in memory alone";
        run.commit.Commit();
        EXPECT_EQ(caller.sent, "\x06");
    }
    for (int kill = 0; kill < 2; ++kill) {
        Run run(*this);
        EXPECT_TRUE(intake.events.empty());
        EXPECT_EQ(run.journal.Waiting().size(), 1u);
    }
    {
        Run run(*this);
        FakeWinsock& caller = run.Connect();
        caller.Arrive("S011[#1|AHall window]\x14");
        ASSERT_EQ(intake.events.size(), 1u);
        EXPECT_EQ(intake.events.front().DefaultAlarmCode, "BA01");
        EXPECT_EQ(intake.events.front().ExtraText, "Hall window");
    }
    {
        Run run(*this);
        EXPECT_EQ(run.journal.Waiting().size(), 1u) << "killed before the turn was committed: once more";
        for (int i = 0; i < 7; ++i) run.Tick();
        ASSERT_EQ(intake.events.size(), 1u) << "its text will not come again";
        EXPECT_EQ(intake.events.front().DefaultAlarmCode, "BA01");
    }
    Run run(*this);
    for (int i = 0; i < 7; ++i) run.Tick();
    EXPECT_TRUE(intake.events.empty()) << "exactly once";
}

TEST_F(HeldTelegramTest, BecomesAnEventWhenItsPortIsAnotherOrGone) {
    for (const bool isGone : {false, true}) {
        WritePort("MessageFormat=13\r\n");
        {
            Run run(*this);
            run.Connect().Arrive("S011[#1|NBA01]\x14");
            run.commit.Commit();
        }
        WritePort("MessageFormat=2\r\n");
        if (isGone) RemoveFile(folder.Resolve("Settings\\Port1.ini"));
        Run run(*this);
        ASSERT_EQ(intake.events.size(), 1u);
        EXPECT_NE(intake.events.front().ExtraText.find("S011[#1|NBA01]"), Text::npos);
        EXPECT_TRUE(run.journal.Waiting().empty());
    }
}

}  // namespace
}  // namespace nordkeep
