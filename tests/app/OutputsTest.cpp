#include "store/EventFile.h"
#include "tests/app/ground/Listener.h"
#include "tests/app/ground/RunningCopy.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <csignal>

namespace nordkeep {
namespace {

/// One copy with a port of format 0, and the lines and devices that it drives.
class OutputsTest : public ::testing::Test {
 protected:
    OutputsTest() {
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;B\xE5tklubben;\r\n");
        copy.Data().Write("Settings\\Town.TypeCode", "01;1;Brand;02\r\n");
        copy.AddPort(
            "Port1",
            "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(tcpPort),
            "Robofon=Town");
    }
    void Start(const std::string& settings) {
        copy.WriteMainSettings(settings);
        copy.Start();
    }
    /// An alarm comes in and is acknowledged.
    void Alarm() const {
        Caller caller(tcpPort);
        caller.Send(RobofonTelegram("10000101"));
        EXPECT_EQ(caller.Receive(1), "\x06");
    }
    cAlarm StoredAlarm() const {
        cAlarm alarm;
        EXPECT_TRUE(ReadFromDisk(copy.Data().Read(copy.EventFiles().at(0)), 1, alarm));
        return alarm;
    }

    RunningCopy copy{};
    int tcpPort = FreePort();
};

Text ReceiveLine(const Caller& caller) {
    Text line;
    for (Text byte; byte != "\n"; line += byte) {
        byte = caller.Receive(1);
        if (byte.empty()) break;
    }
    return line;
}

TEST_F(OutputsTest, TorvexCallsInAndGetsAlarmsAndCyclicLines) {
    const int torvexPort = FreePort();
    Start(
        "TorvexCyclicWritePeriod=1\r\nCyclicWriteTimePeriodInSeconds=1\r\nTorvexCyclicWriteString=alive\r\n"
        "[Torvex]\r\nFormat=[TrIDCode]|[TrTypeCode]\r\nPort=" +
        std::to_string(torvexPort));
    Caller torvex(torvexPort);
    EXPECT_EQ(ReceiveLine(torvex), "alive\n");
    Alarm();
    Text line = ReceiveLine(torvex);
    while (line == "alive\n") line = ReceiveLine(torvex);
    EXPECT_EQ(line, "B\xE5tklubben|Brand\n");
    EXPECT_EQ(StoredAlarm().m_SentToTorvex, -1);
    Caller second(torvexPort);
    EXPECT_EQ(ReceiveLine(second), "alive\n") << "who calls last is served";
}

TEST_F(OutputsTest, TorvexIsCalledAtItsAddress) {
    const Listener listener;
    Start(
        "[Torvex]\r\nRetryFailedTransmissions=1\r\nFormat=[AlarmCodeToStore]\r\nAddress=127.0.0.1\r\nPort=" +
        std::to_string(listener.Port()));
    const Visitor torvex = listener.Accept();
    Alarm();
    EXPECT_EQ(torvex.ReceiveLine(), "10000101\n");
}

TEST_F(OutputsTest, TorvexGetsLaterWhatCouldNotBeSent) {
    const int torvexPort = FreePort();
    Start("[Torvex]\r\nRetryFailedTransmissions=1\r\nFormat=[AlarmCodeToStore]\r\nPort=" +
          std::to_string(torvexPort));
    Alarm();
    EXPECT_EQ(StoredAlarm().m_SentToTorvex, 0);
    EXPECT_TRUE(copy.WaitForOutput("alarms do not leave on it: Torvex, TCP " + std::to_string(torvexPort)));
    const Caller torvex(torvexPort);
    EXPECT_EQ(ReceiveLine(torvex), "10000101\n");
    EXPECT_TRUE(copy.WaitForOutput("is reached again: Torvex"));
    EXPECT_TRUE(WaitFor([&] { return StoredAlarm().m_SentToTorvex == -1; }));
}

TEST_F(OutputsTest, ComCallIsConnectedFedAndConnectedAgain) {
    const Listener listener;
    Start(
        "[ComCall]\r\nReconnectInterval=1000\r\nLineFeedPeriod=1000\r\nFormat=[TrPrio] [TrIDCode]\r\nAddress="
        "127.0.0.1:" +
        std::to_string(listener.Port()));
    Visitor first = listener.Accept();
    EXPECT_EQ(first.ReceiveLine(), "\n");
    first.Close();
    const Visitor again = listener.Accept();
    EXPECT_EQ(again.ReceiveLine(), "\n");
    Alarm();
    Text line = again.ReceiveLine();
    while (line == "\n") line = again.ReceiveLine();
    EXPECT_EQ(line, "1 B\xE5tklubben\n");
    EXPECT_EQ(copy.Stop(), 0);
}

bool IsOpenAtTheOtherEnd(int master) {
    pollfd state{master, 0, 0};
    return poll(&state, 1, 0) == 0 || (state.revents & POLLHUP) == 0;
}

// A pseudo terminal has no control lines: the relay's level and its time are for the fake line to show, here
// it is that the line is opened, held and let go, that its failure is told once over the time of the relay,
// and that nothing else suffers.
TEST_F(OutputsTest, RelayAndPrinterWorkAndFailOnTheirOwn) {
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(master);
    unlockpt(master);
    copy.Data().Write("printer", "");
    Start(
        "RelayPort=7\r\nRelayDelay=1\r\nSystemTimerInterval=10\r\n"
        "PrinterPort=2\r\nPrinterISO2DOS=1\r\nContinousPrinterFormat=[TrIDCode][13][10]\r\n"
        "[SerialPorts]\r\nCOM7=" +
        std::string(ptsname(master)) + "\r\n[PrinterPorts]\r\nLPT2=" + copy.Data().Path() + "/printer");
    EXPECT_TRUE(copy.WaitForOutput("Could not operate the relay (COM7)"));
    Alarm();
    EXPECT_TRUE(WaitFor([&] { return copy.Data().Read("printer") == "B\x86tklubben\r\n"; }));
    RemoveFile(copy.Data().Resolve("printer"));
    Alarm();
    EXPECT_TRUE(copy.WaitForOutput("Could not print alarm 10000101"));
    EXPECT_TRUE(IsOpenAtTheOtherEnd(master));
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_FALSE(IsOpenAtTheOtherEnd(master));
    const std::string output = copy.Output();
    EXPECT_EQ(output.find("relay"), output.rfind("relay")) << output;
    close(master);
}

TEST_F(OutputsTest, AStalledLoopIsMeasuredAndLogged) {
    Start("");
    Alarm();
    kill(copy.Pid(), SIGSTOP);
    sleep(2);
    kill(copy.Pid(), SIGCONT);
    EXPECT_TRUE(copy.WaitForOutput(" 1 The event loop stood still for "));
    Alarm();
}

}  // namespace
}  // namespace nordkeep
