#include "tests/doubles/RobofonTelegram.h"
#include "tests/ports/PortWorld.h"

namespace nordkeep {
namespace {

constexpr const char* kRequest =
    "<AlarmRequest><Reference>1</Reference><TransmitterCode>4711</TransmitterCode>"
    "<EventCode>1</EventCode></AlarmRequest>";

/// A listening port that serves several callers.
class ManyCallersTest : public PortWorld {
 protected:
    ManyCallersTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom("5261=Wait:\n5325=Full\n3604=Too much\n1135=Purged\n");
    }
    void Open(const Text& lines_) {
        folder.Write("Settings\\Port1.ini", "[General]\r\nPortType=TCPS\r\nPortNumber=4001\r\n" + lines_);
        ports.Discover(parts);
        Tick();
    }
    void Tick(int times = 1) {
        for (int i = 0; i < times; ++i) {
            time.Advance(1000);
            ports.Tick(1000, conditions);
            commit.Commit();
        }
    }
    /// The socket of a caller whom a slot of its own is made for.
    FakeWinsock& Call() {
        sockets.At(0).CallIn();
        return sockets.Last();
    }
};

TEST_F(ManyCallersTest, EachIsServedWithHisOwnTextAndReplies) {
    Open("MaxCallers=3\r\n");
    FakeWinsock& first = Call();
    FakeWinsock& second = Call();
    const Text telegram = RobofonTelegram("12340001");
    first.Arrive(telegram.substr(0, 10));
    second.Arrive(telegram + telegram.substr(0, 5));
    first.Arrive(telegram.substr(10) + "\x07");
    EXPECT_EQ(first.sent + second.sent, "");
    commit.Commit();
    EXPECT_EQ(first.sent, "\x06\x06");
    EXPECT_EQ(second.sent, "\x06");
    second.CloseByPeer();
    EXPECT_EQ(&Call(), &second) << "the slot serves the next";
    second.Arrive(telegram);
    commit.Commit();
    EXPECT_EQ(second.sent, "\x06\x06") << "and nothing of the one before spoils what he sends";
    EXPECT_EQ(intake.events.size(), 3u);
}

TEST_F(ManyCallersTest, WhatAllHaveLeftTogetherHoldsTheNextOnes) {
    Open("MaxCallers=3\r\n");
    Text flood;
    for (int i = 0; i < 100'000; ++i) flood += RobofonTelegram("12340001");
    for (int i = 0; i < 2; ++i) {
        FakeWinsock& caller = Call();
        EXPECT_FALSE(sockets.At(0).areCallersHeld);
        caller.ArriveUntold(flood);
        caller.CloseByPeer();
    }
    EXPECT_TRUE(sockets.At(0).areCallersHeld);
    time.Pump();
    EXPECT_FALSE(sockets.At(0).areCallersHeld);
    EXPECT_EQ(intake.events.size(), 200'000u);
    EXPECT_EQ(LinesWith("Wait: Port1"), 1u);
}

TEST_F(ManyCallersTest, ThirtyGatewaysThatCallAtOnceAreAllAnswered) {
    Open("MaxCallers=40\r\nMessageFormat=9\r\n");
    for (int i = 0; i < 30; ++i) Call();
    for (std::size_t i = 1; i <= 30; ++i) sockets.At(i).Arrive(kRequest);
    commit.Commit();
    EXPECT_EQ(intake.events.size(), 30u);
    for (std::size_t i = 1; i <= 30; ++i) {
        EXPECT_NE(sockets.At(i).sent.find("<status>0</status>"), Text::npos) << i;
        EXPECT_EQ(sockets.At(i).state, SocketState::Closed) << "such a gateway expects the end";
    }
    Call();
    EXPECT_EQ(sockets.made.size(), 31u) << "the places are free again";
}

TEST_F(ManyCallersTest, TheIdlestMakesRoomAndWhatHeHasSentCounts) {
    Open("MaxCallers=2\r\n");
    FakeWinsock& first = Call();
    Tick();
    FakeWinsock& second = Call();
    Tick();
    first.Arrive("\x07");
    second.ArriveUntold(RobofonTelegram("12340001"));
    EXPECT_EQ(&Call(), &second);
    commit.Commit();
    EXPECT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(second.sent, "") << "the answer was for somebody else";
    EXPECT_EQ(first.state, SocketState::Connected);
    Call();
    EXPECT_EQ(LinesWith("Full"), 1u);
}

TEST_F(ManyCallersTest, PartsOfALongTextAreNotMixedUp) {
    Open("MaxCallers=2\r\nMessageFormat=4\r\n");
    const auto frame = [](char bits, const Text& text) {
        const Text inner = Text(2, '\0') + static_cast<char>(15 + text.size()) + "P\x18\x05\x11\x0D\x2D\x01" +
                           "1" + bits + Text(1, '\0') + text;
        unsigned sum = 0;
        for (const char c : inner) sum += static_cast<unsigned char>(c);
        return "\x02" + inner + static_cast<char>(sum >> 8) + static_cast<char>(sum & 255) + "\x03";
    };
    FakeWinsock& first = Call();
    FakeWinsock& second = Call();
    first.Arrive(frame('\x20', "1000"));
    second.Arrive(frame('\x20', "2000"));
    first.Arrive(frame('\x10', "01"));
    second.Arrive(frame('\x10', "02"));
    ASSERT_EQ(intake.events.size(), 2u);
    EXPECT_EQ(intake.events[0].DefaultAlarmCode, "100001");
    EXPECT_EQ(intake.events[1].DefaultAlarmCode, "200002");
}

TEST_F(ManyCallersTest, NoneHoldsMuchWithoutATelegramAndHalfOnesGo) {
    Open("MaxCallers=4000\r\nMessageFormat=9\r\n");
    FakeWinsock& caller = Call();
    caller.Arrive(Text(20'000, 'x'));
    EXPECT_EQ(LinesWith("Too much"), 1u);
    FakeWinsock& slow = Call();
    slow.Arrive(Text(kRequest).substr(0, 40));
    Tick(7);
    EXPECT_EQ(LinesWith("Purged"), 1u);
    caller.unsentBytes = 65 << 10;
    caller.Arrive(kRequest);
    commit.Commit();
    EXPECT_EQ(caller.state, SocketState::Closed) << "he does not read what he is answered";
}

}  // namespace
}  // namespace nordkeep
