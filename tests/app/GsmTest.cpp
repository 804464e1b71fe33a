#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/doubles/ModemOnPty.h"

#include <gtest/gtest.h>

#include <chrono>
#include <set>

namespace nordkeep {
namespace {

class GsmTest : public ::testing::Test {
 protected:
    void Start(const ModemOnPty& modem, const std::string& more = {}) {
        copy.WriteMainSettings("[SerialPorts]\r\nCOM1=" + modem.Device());
        copy.AddPort("Port1",
                     "PortType=RS232\r\nPortNumber=1\r\nPortSetting=115200,N,8,1\r\nMessageFormat=3\r\n"
                     "PollInterval=1\r\nPauseBetweenEachPoll=1\r\n" +
                         more);
        copy.AddPort("Port2", "PortType=TCPS\r\nMessageFormat=0\r\nPortNumber=" + std::to_string(linePort));
        copy.Start();
    }
    std::multiset<Text> Events() const {
        std::multiset<Text> events;
        for (const Text& file : copy.EventFiles()) {
            cAlarm alarm;
            if (ReadFromDisk(copy.Data().Read(file), 1, alarm)) {
                events.insert(alarm.m_ProtocolType + " " + alarm.m_AlarmCode + "|" + alarm.m_ExtraText);
            }
        }
        return events;
    }

    int linePort = FreePort();
    RunningCopy copy{};
};

TEST_F(GsmTest, TakesMessagesAndCallsOfAModem) {
    ModemOnPty modem({.pieceSize = 7, .pauseMs = 2});
    modem.Deliver({"+46701234567", "1001 Brand\r\nOK"});
    Start(modem, "PIN=1234");
    modem.Deliver({"070", "1002 all OK\r\nsecond line"});
    EXPECT_TRUE(WaitFor([&] { return modem.MessageCount() == 0; })) << copy.Output();
    EXPECT_TRUE(modem.HasHeard("AT+CPIN=\"1234\""));
    EXPECT_TRUE(modem.HasHeard("AT+CSMP=17,169,0,240"));
    modem.SetEcho(false);
    modem.Ring("0701234567");
    modem.Deliver({"070", "1003 \xE5"});
    EXPECT_TRUE(WaitFor([&] { return modem.MessageCount() == 0 && copy.EventFiles().size() == 4; }));
    EXPECT_EQ(Events(), (std::multiset<Text>{"GSM 0046701234567|0046701234567", "GSM 1001|1001 Brand",
                                             "GSM 1002|1002 all OK\tsecond line", "GSM 1003|1003 \xE5"}));
    EXPECT_EQ(copy.Stop(), 0);
}

TEST_F(GsmTest, HoldsUpNothingWhenItHangs) {
    using std::chrono::steady_clock;
    ModemOnPty modem;
    modem.SetSilent(true);
    Start(modem, "CommandTimeout=20");
    EXPECT_TRUE(WaitFor([&] { return modem.HasHeard("AT+CMGF=1"); }));
    const Caller caller(linePort);
    for (int i = 0; i < 20; ++i) {
        const auto start = steady_clock::now();
        caller.Send(RobofonTelegram("1000" + std::to_string(1000 + i)));
        EXPECT_EQ(caller.Receive(1), "\x06");
        EXPECT_LT(steady_clock::now() - start, std::chrono::milliseconds(1000));
    }
    const auto start = steady_clock::now();
    EXPECT_EQ(copy.Stop(), 0) << "in the middle of a wait";
    EXPECT_LT(steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(copy.EventFiles().size(), 20u);
}

}  // namespace
}  // namespace nordkeep
