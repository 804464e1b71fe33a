#include "platform/KeptFiles.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <random>

namespace nordkeep {
namespace {

constexpr const char* kCopier = NORDKEEP_BIN_DIR "/NKCopy";

struct CopyFolder {
    TempFolder folder{};
    int Run(const std::string& options = {}) const {
        return Shell("cd " + folder.Path() + " && " + options + " " + kCopier + " Copies\\\\Alarm.LOG")
            .status;
    }
    Text Copied() const { return folder.Read("Copies\\Alarm.LOG"); }
};

// Whenever it is killed, also in the middle of a write, each line is there once and in order.
TEST(AlarmLogCopy, LosesAndDoublesNothingOverKills) {
    const CopyFolder w;
    w.folder.MakeFolders("Copies");
    AppendingFile spool(w.folder.Tree());
    std::mt19937 random(11);
    Text all;
    for (int round = 0; round < 60; ++round) {
        for (int line = 0; line < 20; ++line) {
            const Text text =
                "line " + std::to_string(round * 20 + line) + Text(random() % 300, '.') + "\r\n";
            ASSERT_TRUE(spool.AppendUnlessTaken("AlarmLogFile.spl", text));
            all += text;
        }
        // Some system call of the way that changes files is the last one.
        static constexpr const char* kCalls[] = {"rename", "openat", "write", "fsync", "unlink", "fdatasync"};
        const std::string call = kCalls[random() % std::size(kCalls)];
        w.Run("strace -qq -o /dev/null -e trace=" + call + " -e inject=" + call +
              ":signal=KILL:when=" + std::to_string(1 + random() % 6));
    }
    EXPECT_EQ(w.Run(), 0);
    EXPECT_EQ(w.Run(), 0);
    EXPECT_EQ(w.Copied(), all);
    EXPECT_EQ(w.folder.Read("AlarmLogFile.spl") + w.folder.Read("AlarmLogFile.taken"), "");
}

TEST(AlarmLogCopy, BeginsNewFilesBySizeAndDayAndSaysWhatHindersIt) {
    const CopyFolder w;
    w.folder.Write("AlarmLogFile.spl", "one\r\n");
    EXPECT_EQ(w.Run(), 1) << "there is no such folder";
    w.folder.MakeFolders("Copies");
    EXPECT_EQ(w.Run(), 0);
    EXPECT_EQ(w.Copied(), "one\r\n");
    w.folder.Write("Settings\\Nordkeep.INI", "[General]\r\nAlarmLogFileMaxSize=1\r\n");
    for (const int size : {2000, 2000, 10}) {
        w.folder.Write("AlarmLogFile.spl", Text(static_cast<std::size_t>(size), 'x') + "\r\n");
        EXPECT_EQ(w.Run(), 0);
    }
    EXPECT_EQ(w.Copied(), "xxxxxxxxxx\r\n");
    EXPECT_EQ(ListFiles(w.folder.Resolve("Copies")).size(), 3u);
    w.folder.Write("Settings\\Nordkeep.INI", "[General]\r\nAlarmLogFileDaily=1\r\n");
    Shell("touch -d '3 days ago' " + w.folder.Resolve("Copies\\Alarm.LOG"));
    w.folder.Write("AlarmLogFile.spl", "today\r\n");
    EXPECT_EQ(w.Run(), 0);
    EXPECT_EQ(w.Copied(), "today\r\n");
    EXPECT_EQ(ListFiles(w.folder.Resolve("Copies")).size(), 4u);
    EXPECT_EQ(Shell(kCopier).status, 2);
}

TEST(AlarmLogCopy, IsStartedByTheProgramInItsDataFolder) {
    RunningCopy copy;
    copy.WriteMainSettings("CreateLogFile=1\r\nAlarmLogFileFileFormat=[AlarmCodeToStore]\r\n");
    const int port = FreePort();
    copy.AddPort("Port1",
                 "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port));
    copy.Start();
    const Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    EXPECT_TRUE(WaitFor([&] { return copy.Data().Read("Alarm.LOG").find("10000101") != Text::npos; }));
}

}  // namespace
}  // namespace nordkeep
