#include "platform/FolderLock.h"
#include "platform/Signals.h"
#include "platform/qt/QtSignalWatch.h"
#include "platform/qt/QtSockets.h"
#include "platform/qt/QtUserStore.h"
#include "tests/doubles/TempFolder.h"
#include "tests/platform/LoopTest.h"
#include "tests/platform/Peer.h"

#include <clocale>
#include <csignal>
#include <vector>

namespace nordkeep {
namespace {

using Moment = std::chrono::steady_clock;

int ElapsedMs(Moment::time_point since) {
    return static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Moment::now() - since).count());
}

using Loop = LoopTest;

TEST_F(Loop, TicksGoOnWhileTheHandlerWaits) {
    int depth = 0;
    int deepest = 0;
    const auto timer = loop.NewTimer([&] {
        deepest = std::max(deepest, ++depth);
        if (depth < 3) loop.SleepAndPump(50);
        --depth;
    });
    timer->Start(5);
    EXPECT_TRUE(Until([&] { return deepest == 3; }));
    timer->Stop();
}

TEST_F(Loop, TicksDoNotPileUpWhileTheLoopIsBusy) {
    int ticks = 0;
    const auto timer = loop.NewTimer([&] { ++ticks; });
    timer->Start(10);
    for (const auto begin = Moment::now(); ElapsedMs(begin) < 100;) {
    }
    loop.Pump();
    EXPECT_EQ(ticks, 1);
    timer->Stop();
    EXPECT_FALSE(timer->IsRunning());
    EXPECT_EQ(timer->IntervalMs(), 10);
}

TEST_F(Loop, KeepsTheTimeOfRepeatedTicks) {
    int ticks = 0;
    const auto timer = loop.NewTimer([&] { ++ticks; });
    const auto begin = Moment::now();
    timer->Start(20);
    EXPECT_TRUE(Until([&] { return ticks == 10; }));
    EXPECT_GE(ElapsedMs(begin), 199);
    EXPECT_LT(ElapsedMs(begin), 1000);
}

TEST_F(Loop, AHandlerMayStopAndEndItsTimer) {
    int ticks = 0;
    std::unique_ptr<Timer> timer;
    timer = loop.NewTimer([&] {
        ++ticks;
        timer.reset();
    });
    timer->Start(1);
    EXPECT_TRUE(Until([&] { return timer == nullptr; }));
    const auto other = loop.NewTimer([&] { ++ticks; });
    other->Start(1);
    other->Stop();
    Settle();
    EXPECT_EQ(ticks, 1);
}

TEST_F(Loop, APostedTaskRunsLaterAndInOrder) {
    std::vector<int> order;
    loop.Post([&] {
        loop.Post([&] { order.push_back(3); });
        order.push_back(1);
    });
    loop.Post([&] { order.push_back(2); });
    EXPECT_TRUE(order.empty());
    EXPECT_TRUE(Until([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(Loop, ATaskThatPostsItselfLetsOthersRun) {
    bool isOver = false;
    int rounds = 0;
    std::function<void()> again = [&] {
        ++rounds;
        if (!isOver) loop.Post(again);
    };
    loop.Post(again);
    loop.SleepAndPump(20);
    isOver = true;
    EXPECT_GT(rounds, 10);
    Settle();
}

TEST_F(Loop, APostedTaskRunsBehindAllSocketsThatAreReady) {
    QtSockets sockets;
    const auto listener = sockets.NewSocket(SocketKind::Tcp);
    std::vector<std::unique_ptr<Winsock>> lines;
    std::vector<Text> order;
    listener->SetEvents({.connectionRequest = [&](SocketRequest request) {
        lines.push_back(sockets.NewSocket(SocketKind::Tcp));
        Winsock* slot = lines.back().get();
        slot->SetEvents({.dataArrival = [&, slot] {
            order.push_back(slot->GetData());
            if (order.size() == 1) loop.Post([&] { order.push_back("task"); });
        }});
        slot->Accept(request);
    }});
    ASSERT_TRUE(listener->Listen());
    std::vector<Peer> peers;
    for (int i = 0; i < 4; ++i) peers.push_back(Peer::Call(listener->LocalPort()));
    ASSERT_TRUE(Until([&] { return lines.size() == 4; }));
    for (Peer& peer : peers) peer.Send("x");
    ASSERT_TRUE(Until([&] { return order.size() == 5; }));
    EXPECT_EQ(order.back(), "task");
}

TEST_F(Loop, RunEndsWithTheStatusOfQuit) {
    const auto timer = loop.NewTimer([&] { loop.Quit(7); });
    timer->Start(1);
    EXPECT_EQ(loop.Run(), 7);
    EXPECT_EQ(loop.Run(), 7) << "a Quit before Run counts";
}

TEST_F(Loop, TheToolkitLeavesNumbersAlone) {
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(Loop, ASignalBecomesAnEvent) {
    for (const int signal : {SIGTERM, SIGINT}) {
        int told = 0;
        Signals caught;
        const QtSignalWatch watch(caught, [&] { ++told; });
        std::raise(SIGHUP);
        std::raise(SIGPIPE);
        std::raise(signal);
        EXPECT_TRUE(Until([&] { return told == 1; }));
    }
}

TEST_F(Loop, AWaitInsideAnotherOutlivesItWithoutHangingIt) {
    // The outer wait's time comes while the inner one runs.
    bool isOver = false;
    loop.Post([&] { loop.SleepAndPump(30); });
    loop.Post([&] { isOver = true; });
    const auto begin = Moment::now();
    loop.SleepAndPump(5);
    EXPECT_TRUE(isOver);
    EXPECT_GE(ElapsedMs(begin), 30);
    EXPECT_LT(ElapsedMs(begin), 2000);
}

TEST_F(Loop, TheUserStoreKeepsNumbers) {
    // The toolkit asks for the user's folder once.
    static const TempFolder home;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.Path()));
    const Text key = "Main_Left" + std::to_string(home.Read("Nordkeep/Nordkeep.conf").size());
    EXPECT_EQ(QtUserStore().Read(key), std::nullopt);
    QtUserStore().Write(key, -5);
    EXPECT_EQ(QtUserStore().Read(key), -5);
    EXPECT_TRUE(home.Exists("Nordkeep/Nordkeep.conf"));
}

TEST(SignalsDeathTest, TheSecondSignalEndsAtOnce) {
    const auto twice = [] {
        Signals caught;
        std::raise(SIGTERM);
        std::raise(SIGINT);
    };
    EXPECT_EXIT(twice(), testing::ExitedWithCode(1), "");
}

TEST(FolderLock, OnlyOneHoldsAFolder) {
    const TempFolder folder;
    {
        const FolderLock first(folder.Path());
        EXPECT_EQ(first.Result(), FolderLock::Outcome::Held);
        EXPECT_EQ(FolderLock(folder.Path()).Result(), FolderLock::Outcome::HeldByAnother);
    }
    EXPECT_EQ(FolderLock(folder.Path()).Result(), FolderLock::Outcome::Held);
    EXPECT_EQ(FolderLock(folder.Path() + "/missing").Result(), FolderLock::Outcome::Failed);
}

}  // namespace
}  // namespace nordkeep
