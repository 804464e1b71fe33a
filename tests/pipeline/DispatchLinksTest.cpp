#include "pipeline/ComCallLink.h"
#include "pipeline/TorvexLink.h"
#include "tests/doubles/FakeWinsock.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// A log whose lines can be read.
struct LinkTest : ::testing::Test {
    LinkTest() {
        language.LoadFrom(
            "5220=Lost \n5221=Back \n5222=no answer\n5223=no caller\n5224=closed\n5225=Unused \n");
        log.SetRowListener([this](const LogRow& row) { rows.push_back(row.text); });
    }
    std::vector<Text> TakeRows() { return std::exchange(rows, {}); }
    using Rows = std::vector<Text>;

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    Rows rows{};
    FakeSockets sockets{};
};

struct ComCallTest : LinkTest {
    void Ticks(int count) {
        for (int i = 0; i < count; ++i) link.Tick(1000);
    }
    ComCallSettings settings{
        .Address = "centre.example:4001", .Format = "", .ReconnectInterval = 5000, .LineFeedPeriod = 3000};
    ComCallLink link{{.settings = settings, .sockets = sockets, .log = log, .language = language}};
    FakeWinsock& socket = sockets.Last();
};

TEST_F(ComCallTest, ConnectsOnTheFirstTickAndAgainWhenTheLineBreaks) {
    EXPECT_FALSE(link.Send("x"));
    Ticks(1);
    EXPECT_EQ(socket.remoteHost, "centre.example");
    EXPECT_EQ(socket.remotePort, 4001);
    EXPECT_EQ(socket.state, SocketState::Connecting);
    socket.Establish();
    socket.Arrive("what the receiver says is thrown away");
    EXPECT_TRUE(link.Send("line\n"));
    Ticks(1000);
    EXPECT_EQ(socket.GetData(), "");
    socket.CloseByPeer();
    Ticks(1);
    EXPECT_EQ(socket.state, SocketState::Connecting) << "the countdown had run out long ago";
    socket.Break("refused");
    Ticks(4);
    EXPECT_EQ(socket.state, SocketState::Closed);
    Ticks(1);
    EXPECT_EQ(socket.state, SocketState::Connecting);
}

TEST_F(ComCallTest, LeavesASlowAttemptItsTime) {
    Ticks(1);
    const int before = socket.closes;
    Ticks(9);
    EXPECT_EQ(socket.closes, before);
    Ticks(1);
    EXPECT_EQ(socket.closes, before + 1);
    EXPECT_EQ(socket.state, SocketState::Connecting) << "a new attempt";
}

TEST_F(ComCallTest, FeedsTheLine) {
    Ticks(1);
    socket.Establish();
    Ticks(8);
    EXPECT_EQ(socket.sent, "\n\n\n");
    settings.LineFeedPeriod = 0;
    Ticks(10);
    EXPECT_EQ(socket.sent, "\n\n\n");
}

TEST_F(ComCallTest, IsOffWithoutIntervalOrAddress) {
    settings.ReconnectInterval = 0;
    Ticks(10);
    settings.ReconnectInterval = 1000;
    settings.Address.clear();
    Ticks(10);
    EXPECT_EQ(socket.state, SocketState::Closed);
    EXPECT_FALSE(link.IsConfigured());
}

TEST_F(ComCallTest, TellsEachOutageOnceAndItsEnd) {
    Ticks(1);
    socket.Break("refused");
    Ticks(5);
    socket.Break("refused");
    EXPECT_EQ(TakeRows(), Rows{"Lost ComCall centre.example:4001 (refused)"});
    Ticks(5);
    socket.Establish();
    EXPECT_EQ(TakeRows(), Rows{"Back ComCall centre.example:4001"});
    socket.CloseByPeer();
    EXPECT_EQ(TakeRows(), Rows{"Lost ComCall centre.example:4001 (closed)"});
    Ticks(1);
    socket.Establish();
    TakeRows();
    socket.CloseByPeer();
    Ticks(1);
    socket.failure = "no route";
    TakeRows();
    socket.Establish();
    EXPECT_EQ(TakeRows(), Rows{"Back ComCall centre.example:4001"});
}

TEST_F(ComCallTest, TellsAPeerThatNeverAnswersAndALineThatIsNeverConnected) {
    Ticks(30);
    EXPECT_EQ(TakeRows(), Rows{"Lost ComCall centre.example:4001 (no answer)"});
    settings.ReconnectInterval = 0;
    Ticks(30);
    EXPECT_EQ(TakeRows(), Rows{"Unused ComCall centre.example:4001"});
}

struct TorvexTest : LinkTest {
    void Start(const TorvexSettings& given) {
        settings = given;
        link.Start();
    }
    TorvexSettings settings{};
    TorvexLink link{
        {.settings = settings, .sockets = sockets, .loop = time, .log = log, .language = language}};
    FakeWinsock& data = sockets.Last();
};

TEST_F(TorvexTest, TellsWhyItsPeerIsNotReached) {
    Start({.Port = 4000, .Address = "desk"});
    time.Advance(20'000);
    EXPECT_EQ(TakeRows(), Rows{"Lost Torvex desk:4000 (no answer)"});
    data.Establish();
    EXPECT_EQ(TakeRows(), Rows{"Back Torvex desk:4000"});
    data.Break("reset");
    EXPECT_FALSE(link.Send("x"));
    EXPECT_EQ(TakeRows(), Rows{"Lost Torvex desk:4000 (reset)"})
        << "the alarm that cannot be sent is no news";
}

TEST_F(TorvexTest, TellsAnAlarmThatNobodyHasCalledInFor) {
    Start({.Port = 4000});
    EXPECT_TRUE(TakeRows().empty()) << "a listener without a caller is no failure yet";
    EXPECT_FALSE(link.Send("x"));
    EXPECT_FALSE(link.Send("x"));
    EXPECT_EQ(TakeRows(), Rows{"Lost Torvex, TCP 4000 (no caller)"});
}

TEST_F(TorvexTest, AnUnusedOneTellsNothing) {
    EXPECT_FALSE(link.Send("x"));
    EXPECT_TRUE(rows.empty());
}

}  // namespace
}  // namespace nordkeep
