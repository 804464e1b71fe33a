#include "platform/qt/QtSockets.h"
#include "tests/platform/LoopTest.h"
#include "tests/platform/Peer.h"

#include <vector>

namespace nordkeep {
namespace {

/// A listening socket and one slot that takes every caller, pushing off the one before.
class TcpServer : public LoopTest {
 protected:
    void SetUp() override {
        listener->SetEvents({.connectionRequest = [this](SocketRequest request) { onRequest(request); }});
        slot->SetEvents({.dataArrival = [this] { onArrival(); },
                         .closed = [this] { told += "closed "; },
                         .error = [this](const Text& text) { told += "error:" + text + " "; },
                         .sendComplete = [this] { told += "complete "; }});
        ASSERT_TRUE(listener->Listen()) << listener->LastError();
        ASSERT_EQ(listener->State(), SocketState::Listening);
    }
    Peer Call() {
        Peer peer = Peer::Call(listener->LocalPort());
        EXPECT_TRUE(Until([&] { return accepted > 0 && slot->State() == SocketState::Connected; }));
        return peer;
    }

    QtSockets sockets{};
    std::unique_ptr<Winsock> listener = sockets.NewSocket(SocketKind::Tcp);
    std::unique_ptr<Winsock> slot = sockets.NewSocket(SocketKind::Tcp);
    int accepted = 0;
    Text received{};
    Text told{};
    std::function<void(SocketRequest)> onRequest = [this](SocketRequest request) {
        slot->Close();
        slot->Accept(request);
        ++accepted;
    };
    std::function<void()> onArrival = [this] { received += slot->GetData(); };
};

TEST_F(TcpServer, TakesACallerAndTalks) {
    Peer peer = Call();
    EXPECT_EQ(slot->RemoteHostIP(), "127.0.0.1");
    peer.Send(TextView("a\0\xFF", 3));
    EXPECT_TRUE(Until([&] { return received == TextView("a\0\xFF", 3); }));
    EXPECT_TRUE(slot->SendData(TextView("\0\x06", 2)));
    EXPECT_TRUE(Until([&] { return peer.Received() == TextView("\0\x06", 2); }));
    EXPECT_TRUE(Until([&] { return told == "complete "; }));
    EXPECT_EQ(slot->UnsentBytes(), 0u);
    EXPECT_EQ(listener->State(), SocketState::Listening);
}

TEST_F(TcpServer, TellsOnceThatAllOfATurnHasLeft) {
    Peer peer = Call();
    for (int i = 0; i < 100; ++i) EXPECT_TRUE(slot->SendData("x"));
    EXPECT_TRUE(Until([&] { return peer.Received().size() == 100; }));
    EXPECT_TRUE(Until([&] { return !told.empty(); }));
    EXPECT_EQ(told, "complete ");
    EXPECT_TRUE(slot->SendData("y"));
    EXPECT_TRUE(Until([&] { return told == "complete complete "; }));
}

TEST_F(TcpServer, TakesCallersOfBothKindsOfAddresses) {
    const auto callers = [&](const Text& bindTo, bool isByIPv6) {
        listener->Close();
        slot->Close();
        EXPECT_TRUE(listener->Bind(0, bindTo)) << listener->LastError();
        EXPECT_TRUE(listener->Listen()) << listener->LastError();
        Peer peer = isByIPv6 ? Peer::CallByIPv6(listener->LocalPort()) : Peer::Call(listener->LocalPort());
        EXPECT_TRUE(Until([&] { return slot->State() == SocketState::Connected; }));
        const Text address = slot->RemoteHostIP();
        received.clear();
        peer.Send("alarm");
        EXPECT_TRUE(Until([&] { return received == "alarm"; }));
        EXPECT_TRUE(slot->SendData("ACK"));
        EXPECT_TRUE(Until([&] { return peer.Received() == "ACK"; }));
        return address;
    };
    EXPECT_EQ(callers("::1", true), "::1");
    EXPECT_EQ(callers("*", true), "::1");
    EXPECT_EQ(callers("*", false), "127.0.0.1") << "as it is written, not as the longer kind has it";
}

TEST_F(TcpServer, ALargeTransferIsSlowedDownNotLost) {
    Peer peer = Call();
    const std::size_t size = 12 << 20;
    const Text part(100000, 'x');
    std::size_t unsent = size;
    EXPECT_TRUE(Until([&] {
        while (unsent > 0) {
            const std::size_t taken = peer.TrySend(TextView(part).substr(0, unsent));
            unsent -= taken;
            if (taken == 0) break;
        }
        return received.size() == size;
    }));
    EXPECT_EQ(received.size(), size);
}

TEST_F(TcpServer, TheRestOfACallerIsThereAheadOfTheNext) {
    Text rest;
    onRequest = [&](SocketRequest request) {
        rest += slot->GetRest();
        slot->Close();
        slot->Accept(request);
        ++accepted;
    };
    const Text much(200'000, 'x');
    for (int i = 0; i < 3; ++i) {
        Peer peer = Peer::Call(listener->LocalPort());
        peer.Send(much);
        if (i == 1) peer.FinishSending();
    }
    Peer last = Peer::Call(listener->LocalPort());
    EXPECT_TRUE(Until([&] { return accepted == 4; }));
    EXPECT_EQ((rest + received).size(), 3 * much.size());
}

TEST_F(TcpServer, ACallerWhoCannotBeAnsweredHasStillSent) {
    onArrival = [] {};
    Peer peer = Call();
    peer.Send("one");
    EXPECT_TRUE(Until([&] { return slot->SendData("x"), slot->UnsentBytes() == 0; }));
    peer.Send("two");
    peer.HangUp();
    // The first answer makes the far end reset the connection, the next one finds it so.
    EXPECT_TRUE(slot->SendData("y"));
    slot->SendData("z");
    EXPECT_EQ(slot->GetRest(), "onetwo");
}

TEST_F(TcpServer, ArrivalsNestWhileTheHandlerWaits) {
    Peer peer = Call();
    bool isNested = false;
    onArrival = [&] {
        received += slot->GetData();
        if (received != "command") return;
        peer.Send("response");
        isNested = Until([&] { return received == "commandresponse"; });
    };
    peer.Send("command");
    EXPECT_TRUE(Until([&] { return isNested; }));
}

TEST_F(TcpServer, DataRightBeforeTheCloseArrivesAndIsAnswered) {
    Peer peer = Call();
    onArrival = [&] {
        received += slot->GetData();
        told += "data ";
        loop.Post([&] { slot->SendData("ACK"); });
    };
    peer.Send("telegram");
    peer.FinishSending();
    EXPECT_TRUE(Until([&] { return told.find("closed") != Text::npos; }));
    EXPECT_EQ(received, "telegram");
    EXPECT_EQ(told.rfind("data ", 0), 0u) << told;
    EXPECT_TRUE(Until([&] { return peer.Received() == "ACK"; }));
}

TEST_F(TcpServer, APeersEndIsToldOnce) {
    for (const bool isReset : {false, true}) {
        told.clear();
        Peer peer = Call();
        if (isReset) peer.Reset();
        peer.HangUp();
        EXPECT_TRUE(Until([&] { return !told.empty(); }));
        Settle();
        EXPECT_EQ(told, "closed ");
        EXPECT_NE(slot->State(), SocketState::Connected);
        EXPECT_FALSE(slot->SendData("x"));
        slot->Close();
        EXPECT_EQ(slot->State(), SocketState::Closed);
    }
}

TEST_F(TcpServer, AnOwnCloseIsSilentAndLosesNothing) {
    Peer peer = Call();
    // More than the system takes at once, and the slot is in use again before it has left.
    const Text large(32 << 20, 'x');
    EXPECT_TRUE(slot->SendData(large));
    slot->Close();
    EXPECT_EQ(slot->State(), SocketState::Closed);
    Peer next = Call();
    EXPECT_TRUE(slot->SendData("next"));
    EXPECT_TRUE(Until([&] { return next.Received() == "next"; }));
    EXPECT_TRUE(Until([&] { return peer.SeesClose(); }));
    EXPECT_EQ(peer.Received().size(), large.size());
    EXPECT_EQ(told, "complete ");
}

TEST_F(TcpServer, ANewCallerPushesTheOldOneOff) {
    Peer first = Call();
    Peer second = Call();
    EXPECT_TRUE(Until([&] { return first.SeesClose(); }));
    first.HangUp();
    second.Send("hello");
    EXPECT_TRUE(Until([&] { return received == "hello"; }));
    EXPECT_EQ(told, "");
}

TEST_F(TcpServer, WhatAnOldConnectionHasQueuedIsNotToldOfTheNew) {
    Peer first = Call();
    Peer second = Peer::Call(listener->LocalPort());
    first.Send("late");
    first.HangUp();
    EXPECT_TRUE(Until([&] { return accepted == 2; }));
    second.Send("new");
    EXPECT_TRUE(Until([&] { return received.find("new") != Text::npos; }));
    Settle();
    EXPECT_TRUE(told.empty() || told == "closed ");
    EXPECT_EQ(slot->State(), SocketState::Connected);
}

TEST_F(TcpServer, ARefusedCallerIsReset) {
    SocketRequest old = 0;
    onRequest = [&](SocketRequest request) { old = request; };
    Peer peer = Peer::Call(listener->LocalPort());
    EXPECT_TRUE(Until([&] { return peer.SeesReset(); }));
    slot->Accept(old);
    slot->Accept(12345);
    EXPECT_EQ(slot->State(), SocketState::Closed);
}

TEST_F(TcpServer, CallersWhoAreHeldWaitAndAreLetInBehindIt) {
    onRequest = [&](SocketRequest request) {
        slot->Accept(request);
        listener->HoldCallers(++accepted == 1);
    };
    const Peer first = Call();
    Peer second = Peer::Call(listener->LocalPort());
    second.Send("waits");
    const Peer third = Peer::Call(listener->LocalPort());
    Settle();
    EXPECT_EQ(accepted, 1);
    listener->HoldCallers(false);
    EXPECT_TRUE(Until([&] { return accepted == 3; }));
    // Nothing to resume is no fault.
    listener->HoldCallers(true);
    listener->Close();
    listener->HoldCallers(false);
}

TEST_F(TcpServer, HandlersMayCloseTheirOwnSockets) {
    onArrival = [&] { slot->Close(); };
    Peer peer = Call();
    peer.Send("x");
    EXPECT_TRUE(Until([&] { return peer.SeesClose(); }));
    onRequest = [&](SocketRequest request) {
        listener->Close();
        listener->Accept(request);
    };
    Peer other = Peer::Call(listener->LocalPort());
    EXPECT_TRUE(Until([&] { return listener->State() == SocketState::Connected; }));
    EXPECT_TRUE(listener->SendData("taken by the listener"));
    EXPECT_TRUE(Until([&] { return other.Received() == "taken by the listener"; }));
}

TEST_F(TcpServer, ATakenPortIsRefusedWithAText) {
    const auto other = sockets.NewSocket(SocketKind::Tcp);
    other->SetLocalPort(listener->LocalPort());
    EXPECT_FALSE(other->Listen());
    EXPECT_EQ(other->LastError(), "The bound address is already in use");
    EXPECT_NE(other->State(), SocketState::Listening);
    EXPECT_FALSE(other->Bind(listener->LocalPort(), "127.0.0.1"));
    EXPECT_FALSE(other->Bind(0, "192.0.2.1"));
    EXPECT_FALSE(other->Bind(0, "no address"));
    EXPECT_FALSE(other->Bind(70000, ""));
    EXPECT_TRUE(other->Bind(0, "127.0.0.1"));
    EXPECT_TRUE(other->Listen());
    // The port is free again at once, although the connections on it are still in their time of waiting.
    Peer peer = Call();
    const int port = listener->LocalPort();
    slot->Close();
    listener->Close();
    listener->SetLocalPort(port);
    EXPECT_TRUE(listener->Listen()) << listener->LastError();
}

class TcpClient : public LoopTest {
 protected:
    void SetUp() override {
        client->SetEvents({.dataArrival = [this] { received += client->GetData(); },
                           .connected = [this] { told += "connected "; },
                           .closed = [this] { told += "closed "; },
                           .error = [this](const Text& text) { told += "error:" + text + " "; }});
        client->SetRemoteHost("127.0.0.1");
    }

    QtSockets sockets{};
    std::unique_ptr<Winsock> client = sockets.NewSocket(SocketKind::Tcp);
    Text received{};
    Text told{};
};

TEST_F(TcpClient, ConnectsTalksAndHearsTheClose) {
    Peer server = Peer::At(SOCK_STREAM);
    client->SetRemotePort(server.Port());
    for (int round = 0; round < 2; ++round) {
        told.clear();
        received.clear();
        client->Close();
        ASSERT_TRUE(client->Connect());
        EXPECT_TRUE(Until([&] { return told == "connected "; }));
        Peer peer = server.Answer();
        EXPECT_EQ(client->State(), SocketState::Connected);
        EXPECT_TRUE(client->SendData("question"));
        EXPECT_TRUE(Until([&] { return peer.Received() == "question"; }));
        peer.Send("answer");
        peer.HangUp();
        EXPECT_TRUE(Until([&] { return told == "connected closed "; }));
        EXPECT_EQ(received, "answer");
    }
}

TEST_F(TcpClient, ARefusalIsOneError) {
    const int port = Peer::At(SOCK_STREAM).Port();
    client->SetRemotePort(port);
    EXPECT_TRUE(client->Connect());
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(Until([&] { return !told.empty(); }));
    Settle();
    EXPECT_EQ(told, "error:Connection refused ");
    EXPECT_EQ(client->State(), SocketState::Error);
    client->Close();
    EXPECT_EQ(client->State(), SocketState::Closed);
}

TEST_F(TcpClient, WhatCannotBeTriedFailsAtOnce) {
    EXPECT_FALSE(client->Connect());
    client->SetRemotePort(1);
    client->SetRemoteHost("");
    EXPECT_FALSE(client->Connect());
    EXPECT_FALSE(client->LastError().empty());
    EXPECT_FALSE(client->SendData("x"));
    EXPECT_EQ(client->GetData(), "");
    client->Flush();
    client->Close();
    EXPECT_EQ(told, "");
}

TEST_F(TcpClient, UsesTheBoundPort) {
    Peer server = Peer::At(SOCK_STREAM);
    const int port = Peer::At(SOCK_STREAM).Port();
    ASSERT_TRUE(client->Bind(port, "")) << client->LastError();
    client->SetRemotePort(server.Port());
    ASSERT_TRUE(client->Connect());
    EXPECT_TRUE(Until([&] { return told == "connected "; })) << told;
    EXPECT_EQ(client->LocalPort(), port);
}

}  // namespace
}  // namespace nordkeep
