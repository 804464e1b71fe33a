#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <gmock/gmock.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

namespace nordkeep {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;

class BackupTest : public ::testing::Test {
 protected:
    BackupTest() {
        copy.AddPort("Port1",
                     "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port),
                     "Robofon=Town");
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        copy.WriteMainSettings();
    }
    static Shell Run(const std::string& words) {
        return Shell("sh " NORDKEEP_SOURCE_DIR "/tools/nordkeep-backup " + words);
    }
    Shell Backup(const std::string& options = {}) const {
        return Run(options + " '" + copy.Data().Path() + "' '" + archives.Path() + "'");
    }
    /// Sends alarms one after the other until it is told to stop; the count of acknowledged ones.
    std::size_t SendUntil(const std::atomic<bool>& isEnough) const {
        Caller caller(port);
        std::size_t acknowledged = 0;
        while (!isEnough) {
            caller.Send(RobofonTelegram("10000101"));
            acknowledged += caller.Receive(1) == "\x06" ? 1u : 0u;
        }
        return acknowledged;
    }

    RunningCopy copy{};
    TempFolder archives{};
    int port = FreePort();
};

std::string WithoutLineEnd(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

// What was acknowledged before a backup began is in it, however busy the centre is meanwhile, and the centre
// that is put back starts with it.
TEST_F(BackupTest, OfABusyCentreHoldsAllThatWasAcknowledgedBefore) {
    copy.Start();
    {
        Caller caller(port);
        for (int i = 0; i < 300; ++i) caller.Send(RobofonTelegram("10000101"));
        ASSERT_EQ(caller.Receive(300).size(), 300u);
    }
    std::atomic<bool> isEnough = false;
    std::size_t sent = 0;
    std::thread sender([&] { sent = SendUntil(isEnough); });
    const Shell made = Backup();
    isEnough = true;
    sender.join();
    ASSERT_EQ(made.status, 0) << made.output;
    EXPECT_GT(sent, 0u);
    copy.Kill();

    const std::string archive = WithoutLineEnd(made.output);
    EXPECT_THAT(archive, EndsWith(".tar.gz"));
    EXPECT_THAT(Run("--verify '" + archive + "'").output, HasSubstr("events: "));
    const TempFolder empty;
    const std::string place = empty.Path() + "/centre";
    const Shell put = Run("--restore '" + archive + "' '" + place + "'");
    ASSERT_EQ(put.status, 0) << put.output;
    EXPECT_NE(Run("--restore '" + archive + "' '" + place + "'").status, 0) << "over what is there";

    std::filesystem::remove_all(copy.Data().Path());
    std::filesystem::rename(place, copy.Data().Path());
    copy.Start();
    std::set<Text> numbers;
    for (const Text& name : ListFiles(copy.Data().Resolve("Data\\Events"))) numbers.insert(name);
    EXPECT_GE(numbers.size(), 300u);
    EXPECT_EQ(copy.EventFiles().size(), numbers.size());
    Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    EXPECT_EQ(ListFiles(copy.Data().Resolve("Data\\Events")).size(), numbers.size() + 1) << "no number twice";
}

TEST_F(BackupTest, KeepsTheNewestAndRefusesWhatCannotBe) {
    for (const char* old :
         {"nordkeep-20200101-000000.tar.gz", "nordkeep-20200102-000000.tar.gz", "other.tar.gz"})
        archives.Write(old, "x");
    ASSERT_EQ(Backup("--keep 2").status, 0);
    const std::vector<Text> left = ListFiles(archives.Path());
    EXPECT_EQ(left.size(), 3u) << "and nothing half made";
    EXPECT_FALSE(archives.Exists("nordkeep-20200101-000000.tar.gz"));
    EXPECT_TRUE(archives.Exists("other.tar.gz"));

    EXPECT_EQ(Run("--verify '" + archives.Path() + "/other.tar.gz'").status, 1);
    EXPECT_EQ(Run("'" + archives.Path() + "/none' '" + archives.Path() + "'").status, 1);
    EXPECT_EQ(Run("'" + archives.Path() + "' '" + archives.Path() + "'").status, 1) << "into itself";
    EXPECT_EQ(Run("--frobnicate").status, 2);
    EXPECT_EQ(Run("").status, 2);
}

}  // namespace
}  // namespace nordkeep
