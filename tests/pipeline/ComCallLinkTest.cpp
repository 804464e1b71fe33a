#include "pipeline/ComCallLink.h"
#include "tests/doubles/FakeWinsock.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct ComCallTest : ::testing::Test {
    void Ticks(int count) {
        for (int i = 0; i < count; ++i) link.Tick(1000);
    }
    ComCallSettings settings{
        .Address = "centre.example:4001", .Format = "", .ReconnectInterval = 5000, .LineFeedPeriod = 3000};
    FakeSockets sockets{};
    ComCallLink link{settings, sockets};
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

}  // namespace
}  // namespace nordkeep
