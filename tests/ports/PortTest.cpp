#include "tests/doubles/RobofonTelegram.h"
#include "tests/ports/PortWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

Text Telegram(const Text& id = "12340001") {
    return RobofonTelegram(id);
}

class PortTest : public PortWorld {
 protected:
    PortTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom(
            "1041=Opened\n1096=Failed\n1146=Changed\n1135=Purged\n1039=No slot\n1040=Port\n"
            "3604=Too much\n3605=Unknown\n1028=closed\n1035=Port\n3610=Vanished \n"
            "5261=Wait:\n3611=Unread \n1025= at \n1026=Lost \n1027= with \n1029=Connected \n1030=Error \n");
    }

    void Write(const Text& name, const Text& lines_) {
        folder.Write("Settings\\" + name + ".ini", "[General]\r\n" + lines_);
    }
    void Discover() { ports.Discover(parts); }
    void Tick(int times = 1) {
        for (int i = 0; i < times; ++i) {
            time.Advance(1000);
            ports.Tick(1000, conditions);
        }
    }
    /// A port of format 0 that a caller is connected to.
    FakeWinsock& ConnectCaller(const Text& more = {}) {
        Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\n" + more);
        Discover();
        Tick();
        sockets.At(0).CallIn();
        return sockets.At(1);
    }
};

TEST_F(PortTest, SendsTheAckOnlyOnceTheEventIsSafe) {
    FakeWinsock& caller = ConnectCaller();
    caller.Arrive(Telegram() + "\x07");
    EXPECT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(caller.sent, "") << "the line test waits its turn behind the event";
    commit.Commit();
    EXPECT_EQ(caller.sent, "\x06\x06");
}

TEST_F(PortTest, SendsNoAckForWhatWasNotStored) {
    FakeWinsock& caller = ConnectCaller();
    intake.during = [this] {
        if (intake.events.size() == 1) commit.NoteFailure();
    };
    caller.Arrive(Telegram() + Telegram("56780001"));
    commit.Commit();
    EXPECT_EQ(caller.sent, "\x06") << "the second one only";
}

TEST_F(PortTest, NewCallerGetsNothingOfTheOldOnes) {
    FakeWinsock& caller = ConnectCaller();
    caller.Arrive(Telegram() + Telegram().substr(0, 20));
    sockets.At(0).CallIn();
    commit.Commit();
    EXPECT_EQ(caller.sent, "");
    caller.Arrive(Telegram());
    commit.Commit();
    EXPECT_EQ(caller.sent, "\x06") << "the old half telegram does not spoil the new one";
}

TEST_F(PortTest, TakesInWhatEachCallerHasSentWhole) {
    FakeWinsock& caller = ConnectCaller("MessageFormat=2\r\n");
    for (int i = 0; i < 40; ++i) {
        caller.ArriveUntold("\x02" + std::to_string(100 + i) + " text\x03");
        sockets.At(0).CallIn();
    }
    time.Pump();
    ASSERT_EQ(intake.events.size(), 40u);
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(intake.events[static_cast<std::size_t>(i)].DefaultAlarmCode, std::to_string(100 + i));
    }
}

TEST_F(PortTest, TakesInAFloodThatACallerLeavesBehindInTurns) {
    FakeWinsock& caller = ConnectCaller();
    Text flood;
    for (int i = 0; i < 1000; ++i) flood += Telegram();
    caller.Arrive(flood);
    caller.ArriveUntold(flood + Telegram().substr(0, 20));
    commit.Commit();
    const std::size_t answered = caller.sent.size();
    sockets.At(0).CallIn();
    EXPECT_LE(intake.events.size(), 200u) << "the rest leaves room for other lines";
    caller.Arrive(Telegram("56780001"));
    time.Pump();
    commit.Commit();
    ASSERT_EQ(intake.events.size(), 2001u);
    EXPECT_EQ(intake.events.back().DefaultAlarmCode, "56780001") << "in the order of their coming";
    EXPECT_EQ(caller.sent.size(), answered + 1) << "the newcomer hears of nothing but his own";
}

TEST_F(PortTest, TakesInWhatAPeerSentBeforeItWentAway) {
    const bool isBroken[] = {false, true};
    Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\n");
    Write("Port2", "PortType=TCPC\r\nPortNumber=4002\r\nPortSetting=far\r\n");
    Discover();
    std::size_t expected = 0;
    for (const bool breaks : isBroken) {
        Tick(30);
        sockets.At(0).CallIn();
        sockets.At(2).Establish();
        for (FakeWinsock* peer : {&sockets.At(1), &sockets.At(2)}) {
            Text flood;
            for (int i = 0; i < 100; ++i) flood += Telegram();
            peer->Arrive(flood);
            peer->ArriveUntold(flood);
            breaks ? peer->Break("reset") : peer->CloseByPeer();
            EXPECT_EQ(peer->state, SocketState::Closed);
        }
        expected += 400;
        Tick();
        EXPECT_EQ(intake.events.size(), expected) << "broken: " << breaks;
    }
}

TEST_F(PortTest, HoldsNoEndlessHeapOfWhatCallersLeave) {
    FakeWinsock& caller = ConnectCaller();
    Text flood;
    for (int i = 0; i < 45'000; ++i) flood += Telegram();
    int held = 0;
    for (int i = 0; i < 8; ++i) {
        const std::size_t before = intake.events.size();
        caller.ArriveUntold(flood);
        sockets.At(0).CallIn();
        EXPECT_LE(intake.events.size() - before, 200u) << "nor is it worked off in one turn";
        if (!sockets.At(0).areCallersHeld) continue;
        ++held;
        time.Pump();
        EXPECT_FALSE(sockets.At(0).areCallersHeld);
    }
    EXPECT_EQ(held, 2) << "beyond 4 MiB nobody else is let in until that has gone down";
    time.Pump();
    EXPECT_EQ(intake.events.size(), 8u * 45'000);
    EXPECT_EQ(LinesWith("Wait: Port1"), 1u);
}

TEST_F(PortTest, CallsNobodyWhoHasLeftAHeap) {
    Write("Port1", "PortType=TCPC\r\nPortNumber=4002\r\nPortSetting=far\r\n");
    Discover();
    Tick(30);
    FakeWinsock& peer = sockets.At(0);
    peer.Establish();
    Text flood;
    for (int i = 0; i < 200'000; ++i) flood += Telegram();
    peer.ArriveUntold(flood);
    peer.CloseByPeer();
    // Due again, and nothing of the heap has had its turn yet.
    for (int i = 0; i < 30; ++i) ports.Tick(1000, conditions);
    EXPECT_EQ(peer.state, SocketState::Closed);
    time.Pump();
    Tick(30);
    EXPECT_EQ(peer.state, SocketState::Connecting);
}

TEST_F(PortTest, TakesWhatArrivesWhileAnEventIsHandled) {
    FakeWinsock& caller = ConnectCaller();
    intake.during = [&] {
        if (intake.events.size() == 1) caller.Arrive(Telegram("22220002"));
    };
    caller.Arrive(Telegram("11110001") + Telegram("33330003"));
    commit.Commit();
    ASSERT_EQ(intake.events.size(), 3u);
    EXPECT_EQ(caller.sent, "\x06\x06\x06");
}

TEST_F(PortTest, ServesAFloodInTurns) {
    FakeWinsock& caller = ConnectCaller();
    Text flood;
    for (int i = 0; i < 200; ++i) flood += Telegram();
    caller.Arrive(flood);
    EXPECT_EQ(intake.events.size(), 64u) << "the rest leaves room for other lines";
    caller.Arrive(Telegram());
    time.Pump();
    EXPECT_EQ(intake.events.size(), 201u);
}

TEST_F(PortTest, ClosesACallerWhoReadsNoReplies) {
    FakeWinsock& caller = ConnectCaller();
    caller.unsentBytes = (1 << 20) + 1;
    caller.Arrive("\x07");
    EXPECT_EQ(caller.state, SocketState::Closed);
    EXPECT_EQ(LinesWith("Unread Port1"), 1u);
}

TEST_F(PortTest, PurgesAHalfTelegramAfterSilence) {
    FakeWinsock& caller = ConnectCaller();
    caller.Arrive(Telegram().substr(0, 13));
    Tick(5);
    EXPECT_EQ(LinesWith("Purged"), 0u);
    Tick();
    EXPECT_EQ(LinesWith("Purged Port1"), 1u);
    caller.Arrive(Telegram());
    EXPECT_EQ(intake.events.size(), 1u);
}

TEST_F(PortTest, KeepsAHalfTelegramOverMidnight) {
    FakeWinsock& caller = ConnectCaller();
    time.Set(OleDate::FromCivil({2024, 3, 5, 23, 59, 58}));
    caller.Arrive(Telegram().substr(0, 13));
    Tick(60);
    EXPECT_EQ(LinesWith("Purged"), 0u);
}

TEST_F(PortTest, DropsAMegabyteWithoutATelegram) {
    FakeWinsock& caller = ConnectCaller("MessageFormat=2\r\n");
    caller.Arrive("\x02" + Text(1 << 20, 'x'));
    EXPECT_EQ(LinesWith("Too much"), 1u);
    caller.Arrive(
        "\x02"
        "12 a\x03");
    EXPECT_EQ(intake.events.size(), 1u);
}

TEST_F(PortTest, RaisesOneFaultForMissingTestTelegramsAndItsEnd) {
    settings.WriteIni("General", "TestTelegramAlarmCode", "A1");
    folder.Write("Settings\\Nordkeep.INI",
                 "[General]\r\nTestTelegramAlarmCode=A1\r\nTestTelegramRestoreCode=R1\r\n");
    FakeWinsock& caller = ConnectCaller("TestTelegramInterval=30\r\nTestTelegramRestoreCode=R2\r\n");
    Tick(29);
    EXPECT_TRUE(intake.events.empty());
    Tick(40);
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(intake.events[0].DefaultAlarmCode, "A1");
    EXPECT_EQ(intake.events[0].ProtocolType, "Nordkeep");
    caller.Arrive(Telegram());
    ASSERT_EQ(intake.events.size(), 3u);
    EXPECT_EQ(intake.events[1].DefaultAlarmCode, "R2") << "the end of the fault stands before the event";
}

TEST_F(PortTest, LogsASeriesOfFailuresOnce) {
    Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\nReopenInterval=2\r\n");
    Discover();
    sockets.At(0).failure = "in use";
    Tick(7);
    EXPECT_EQ(LinesWith("Failed: 'Port1'"), 1u);
    EXPECT_EQ(LinesWith("in use"), 1u);
    sockets.At(0).failure.clear();
    Tick(3);
    EXPECT_EQ(LinesWith("Opened: 'Port1'"), 1u);
}

TEST_F(PortTest, StaysShutUntilTheDateOfPortDisable) {
    Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\nPortDisable=2024-03-05 07:09:00\r\n");
    Discover();
    Tick(50);
    EXPECT_EQ(sockets.At(0).state, SocketState::Closed);
    EXPECT_EQ(LinesWith("Changed (PortDisable=2024-03-05 07:09:00)"), 1u);
    Tick(3);
    EXPECT_EQ(sockets.At(0).state, SocketState::Listening);
}

TEST_F(PortTest, FollowsClientsAndTheDispatchLine) {
    conditions.isServer = true;
    Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\nClosePortWhenNoNetworkClientsAreConnected=3\r\n");
    Write("Port2", "PortType=TCPS\r\nPortNumber=4002\r\nClosePortIfTorvexIsLost=1\r\n");
    Discover();
    Tick();
    EXPECT_FALSE(ports.Ports()[0]->IsOpen()) << "nobody has connected yet";
    EXPECT_TRUE(ports.Ports()[1]->IsOpen()) << "no dispatch line is configured";
    conditions.isAnyClientConnected = conditions.isDispatchConfigured = true;
    Tick();
    EXPECT_TRUE(ports.Ports()[0]->IsOpen());
    EXPECT_FALSE(ports.Ports()[1]->IsOpen());
    conditions.isAnyClientConnected = false;
    Tick(2);
    EXPECT_TRUE(ports.Ports()[0]->IsOpen());
    Tick();
    EXPECT_FALSE(ports.Ports()[0]->IsOpen());
}

TEST_F(PortTest, MakesNoMorePortsThanItHasRoomFor) {
    for (int i = 1; i <= 22; ++i) {
        Write("Port" + Digits(i, 2), i > 9 ? "PortType=RS232\r\n" : "PortType=tcpc\r\nPortSetting=h\r\n");
    }
    Write("Port00", "PortType=NONE\r\n");
    Write("PortXX", "PortType=CARRIER PIGEON\r\n");
    Discover();
    EXPECT_EQ(ports.Ports().size(), 20u);
    EXPECT_EQ(ports.Ports()[7]->PortIndex(), 8);
    EXPECT_EQ(ports.Ports()[8]->PortIndex(), 0);
    EXPECT_EQ(LinesWith("No slot (Port Port09)"), 1u);
    EXPECT_EQ(LinesWith("Unknown"
                        "PortXX"),
              1u);
}

TEST_F(PortTest, ClientPortConnectsAgainAndIsPatient) {
    Write("Port1", "PortType=TCPC\r\nPortSetting=host\r\nPortNumber=4001\r\n");
    Discover();
    Tick(9);
    EXPECT_EQ(LinesWith("Opened"), 1u) << "a slow peer is not torn down";
    sockets.At(0).Establish();
    EXPECT_EQ(LinesWith("Connected Port1 Port1 at host:4001"), 1u);
    sockets.At(0).Arrive(Telegram());
    commit.Commit();
    EXPECT_EQ(sockets.At(0).sent, "\x06");
    sockets.At(0).CloseByPeer();
    EXPECT_EQ(LinesWith("Lost Port1 Port1 with host:4001 closed"), 1u);
    Tick();
    EXPECT_EQ(sockets.At(0).state, SocketState::Connecting);
    sockets.At(0).Break("refused");
    Tick();
    sockets.At(0).Break("refused");
    EXPECT_EQ(LinesWith("refused"), 1u);
}

TEST_F(PortTest, ASerialSettingThatCannotBeReadIsToldOnce) {
    language.LoadFrom("5328=Not understood:\n");
    Write("Port1", "PortType=RS232\r\nPortNumber=3\r\nPortSetting=fast\r\n");
    Discover();
    Tick();
    EXPECT_EQ(LinesWith("Not understood: Port1 Port1 (PortSetting=fast)"), 1u);
    serial.At(0).isOpen = false;
    Tick();
    EXPECT_EQ(LinesWith("Not understood:"), 1u);
}

TEST_F(PortTest, SerialPortOpensTheDeviceThatIsNamedForIt) {
    folder.Write("Settings\\Nordkeep.INI", "[SerialPorts]\r\nCOM3=/dev/ttyUSB7\r\n");
    Write("Port1", "PortType=RS232\r\nPortNumber=3\r\nPortSetting=1200,E,7,1\r\n");
    Write("Port2", "PortType=RS232\r\nPortNumber=2\r\n");
    Discover();
    Tick();
    EXPECT_EQ(serial.At(0).device, "/dev/ttyUSB7");
    EXPECT_EQ(serial.At(0).settings, "1200,E,7,1");
    EXPECT_EQ(serial.At(1).device, "/dev/ttyS1");
    EXPECT_EQ(
        LinesWith("Opened: 'Port1' (PortSettings = COM3:1200,E,7,1, MessageFormat = Robofon (RBM600)) Port1"),
        1u);
}

}  // namespace
}  // namespace nordkeep
