#include "platform/ChildProcess.h"
#include "tests/doubles/TempFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace nordkeep {
namespace {

bool WaitForEnd(ChildProcess& child) {
    for (int i = 0; i < 6000 && child.IsRunning(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return !child.IsRunning();
}

TEST(ChildProcess, TellsHowAProgramEnded) {
    ChildProcess child;
    EXPECT_FALSE(child.Start("nordkeep-has-no-such-program", {}));
    EXPECT_FALSE(child.IsRunning());
    for (const auto& [word, succeeds] :
         {std::pair{"exit 0", true}, std::pair{"exit 3", false}, std::pair{"kill -9 $$", false}}) {
        EXPECT_TRUE(child.Start("sh", {"-c", word}));
        EXPECT_TRUE(WaitForEnd(child)) << word;
        EXPECT_EQ(child.HasSucceeded(), succeeds) << word;
    }
}

TEST(ChildProcess, StopsAProgramAndLeavesNoneBehind) {
    TempFolder folder;
    const NativePath ended = folder.Resolve("ended");
    const std::string script = "trap 'echo x > " + ended + "; exit' TERM; echo > " + folder.Resolve("began") +
                               "; while :; do sleep 0.01; done";
    ChildProcess child;
    EXPECT_TRUE(child.Start("sh", {"-c", script}));
    while (!folder.Exists("began")) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_TRUE(child.Start("sh", {"-c", "exit 0"})) << "the one before is told to end";
    EXPECT_TRUE(WaitForEnd(child));
    EXPECT_TRUE(child.HasSucceeded()) << "the one before does not count";
    for (int i = 0; i < 6000 && !folder.Exists("ended"); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    EXPECT_TRUE(folder.Exists("ended"));
}

TEST(ChildProcess, InheritsNeitherFilesNorSignals) {
    TempFolder folder;
    const int inherited = ::open(folder.Path().c_str(), O_RDONLY);
    sigset_t all{};
    sigset_t before{};
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, &before);
    std::signal(SIGHUP, SIG_IGN);
    ChildProcess child;
    EXPECT_TRUE(child.Start("sh", {"-c", "{ grep -E 'SigBlk|SigIgn' /proc/self/status; ls /proc/$$/fd; } >" +
                                             folder.Resolve("seen")}));
    EXPECT_TRUE(WaitForEnd(child));
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    std::signal(SIGHUP, SIG_DFL);
    ::close(inherited);
    const Text seen = folder.Read("seen");
    EXPECT_NE(seen.find("SigBlk:\t0000000000000000\n"), Text::npos) << seen;
    EXPECT_EQ(seen.at(seen.find("\n0\n") - 1), '0') << "no signal from 1 to 4 is ignored: " << seen;
    EXPECT_EQ(seen.find("\n" + std::to_string(inherited) + "\n"), Text::npos) << seen;
}

}  // namespace
}  // namespace nordkeep
