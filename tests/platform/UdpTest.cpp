#include "platform/qt/QtSockets.h"
#include "tests/platform/LoopTest.h"
#include "tests/platform/Peer.h"

#include <vector>

namespace nordkeep {
namespace {

class Udp : public LoopTest {
 protected:
    void SetUp() override {
        slot->SetEvents({.dataArrival = [this] { onArrival(); }});
    }

    QtSockets sockets{};
    std::unique_ptr<Winsock> slot = sockets.NewSocket(SocketKind::Udp);
    std::vector<Text> received{};
    std::function<void()> onArrival = [this] { received.push_back(slot->GetData()); };
};

TEST_F(Udp, AnswersTheLastSenderAndBeforeOneTheRemote) {
    Peer remote = Peer::At(SOCK_DGRAM);
    Peer stranger = Peer::At(SOCK_DGRAM);
    slot->SetRemoteHost("127.0.0.1");
    slot->SetRemotePort(remote.Port());
    ASSERT_TRUE(slot->Connect());
    EXPECT_EQ(slot->State(), SocketState::Open);
    EXPECT_TRUE(slot->SendData("first"));
    EXPECT_TRUE(Until([&] { return remote.Received() == "first"; }));

    stranger.SendTo(slot->LocalPort(), "hello");
    EXPECT_TRUE(Until([&] { return received.size() == 1; }));
    EXPECT_EQ(slot->RemoteHostIP(), "127.0.0.1");
    EXPECT_TRUE(slot->SendData("ACK"));
    EXPECT_TRUE(Until([&] { return stranger.Received() == "ACK"; }));
    EXPECT_EQ(remote.Received(), "first");
}

TEST_F(Udp, AnswersASenderOfTheLongerKindOfAddresses) {
    ASSERT_TRUE(slot->Bind(0, "::1")) << slot->LastError();
    Peer sender = Peer::CallByIPv6(slot->LocalPort(), SOCK_DGRAM);
    sender.Send("alarm");
    EXPECT_TRUE(Until([&] { return received == std::vector<Text>{"alarm"}; }));
    EXPECT_EQ(slot->RemoteHostIP(), "::1");
    EXPECT_TRUE(slot->SendData("ACK"));
    EXPECT_TRUE(Until([&] { return sender.Received() == "ACK"; }));
}

TEST_F(Udp, AHostNameIsLookedUpBehindTheScenes) {
    Peer remote = Peer::At(SOCK_DGRAM);
    slot->SetRemoteHost("localhost");
    slot->SetRemotePort(remote.Port());
    ASSERT_TRUE(slot->Connect());
    EXPECT_TRUE(Until([&] { return slot->SendData("x"); }));
    EXPECT_TRUE(Until([&] { return !remote.Received().empty(); }));
}

TEST_F(Udp, TellsEachDatagramAlsoWhileAHandlerWaits) {
    ASSERT_TRUE(slot->Bind(0, "127.0.0.1"));
    Peer sender = Peer::At(SOCK_DGRAM);
    onArrival = [&] {
        const Text datagram = slot->GetData();
        if (datagram == "wait") {
            sender.SendTo(slot->LocalPort(), "nested");
            Until([&] { return !received.empty() && received.back() == "nested"; });
        }
        received.push_back(datagram);
    };
    for (const TextView datagram : {"one", "", "wait"}) sender.SendTo(slot->LocalPort(), datagram);
    EXPECT_TRUE(Until([&] { return received.size() == 4; }));
    EXPECT_EQ(received, (std::vector<Text>{"one", "", "nested", "wait"}));
    for (int i = 0; i < 100; ++i) sender.SendTo(slot->LocalPort(), "more");
    EXPECT_TRUE(Until([&] { return received.size() == 104; }));
}

TEST_F(Udp, ADatagramThatNobodyTakesStopsNothing) {
    ASSERT_TRUE(slot->Bind(0, ""));
    Peer sender = Peer::At(SOCK_DGRAM);
    int told = 0;
    onArrival = [&] {
        if (++told > 1) received.push_back(slot->GetData());
    };
    sender.SendTo(slot->LocalPort(), "ignored");
    sender.SendTo(slot->LocalPort(), "taken");
    EXPECT_TRUE(Until([&] { return told == 2; }));
    EXPECT_EQ(received, (std::vector<Text>{"taken"}));
}

TEST_F(Udp, ATakenPortIsRefusedWithAText) {
    const int port = Peer::At(SOCK_DGRAM).Port();
    Peer other = Peer::At(SOCK_DGRAM, port);
    EXPECT_FALSE(slot->Bind(port, "127.0.0.1"));
    EXPECT_EQ(slot->LastError(), "The bound address is already in use");
    EXPECT_EQ(slot->State(), SocketState::Closed);
    slot->SetLocalPort(port);
    EXPECT_FALSE(slot->Connect());
    other.HangUp();
    EXPECT_TRUE(slot->Connect());
    EXPECT_FALSE(slot->SendData("to nobody"));
    slot->Close();
    EXPECT_EQ(slot->State(), SocketState::Closed);
    EXPECT_FALSE(slot->SendData("x"));
}

TEST_F(Udp, AHandlerMayCloseAndOpenAgain) {
    ASSERT_TRUE(slot->Bind(0, ""));
    Peer sender = Peer::At(SOCK_DGRAM);
    onArrival = [&] {
        received.push_back(slot->GetData());
        const int port = slot->LocalPort();
        slot->Close();
        EXPECT_TRUE(slot->Bind(port, ""));
    };
    for (std::size_t i = 1; i <= 3; ++i) {
        sender.SendTo(slot->LocalPort(), "x");
        EXPECT_TRUE(Until([&] { return received.size() == i; }));
    }
}

}  // namespace
}  // namespace nordkeep
