#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nordkeep {
namespace {

/// One copy that runs its alive tests in seconds, with an object that is never heard from.
class SupervisionTest : public ::testing::Test {
 protected:
    SupervisionTest() {
        copy.Data().Write("Settings\\Town.IDCode",
                          "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;2\r\n100002;Shop\r\n");
        copy.Data().Write("Settings\\Town.TypeCode", "77;2;Silent;\r\n01;1;Fire;\r\n");
        copy.AddPort(
            "Port1",
            "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(tcpPort),
            "Robofon=Town");
        copy.WriteMainSettings(
            "AliveTestType=77\r\nAliveTestBehaviour=1\r\nAutoReloadTranslations=5\r\n"
            "AutoExchangeServiceInfo=1\r\n");
    }
    void Start() { copy.Start({"/SPEEDUPALIVETEST"}); }
    std::size_t SilenceAlarms() const {
        const auto files = copy.EventFiles();
        return static_cast<std::size_t>(std::ranges::count_if(files, [&](const Text& file) {
            cAlarm alarm;
            return ReadFromDisk(copy.Data().Read(file), 1, alarm) && alarm.m_TranslatedTypeCode == "Silent";
        }));
    }
    Text LastEventsOf(const Text& object) const {
        const Text state = copy.Data().Read("Data\\Town.LastEvents");
        const std::size_t at = state.find(object + ";");
        return at == Text::npos ? Text() : state.substr(at, state.find('\r', at) - at);
    }
    void Alarm(const Text& code) const {
        const Caller caller(tcpPort);
        caller.Send(RobofonTelegram(code));
        EXPECT_EQ(caller.Receive(1), "\x06");
    }

    int tcpPort = FreePort();
    RunningCopy copy{};
};

TEST_F(SupervisionTest, AFailureIsToldOnceAlsoOverARestart) {
    Start();
    EXPECT_TRUE(WaitFor([&] { return SilenceAlarms() == 1; })) << copy.Output();
    Alarm("10000201");
    EXPECT_EQ(copy.Stop(), 0);
    const Text heard = LastEventsOf("100002");
    EXPECT_EQ(heard.find("100002;1899"), Text::npos) << heard;
    EXPECT_NE(LastEventsOf("100001").find(";-1;0;"), Text::npos) << LastEventsOf("100001");

    Start();
    // Several rounds of the scan go by until the exchange file is taken in.
    copy.Data().Write("Data\\Town.ServiceIn", "100002;3\r\n");
    EXPECT_TRUE(WaitFor([&] { return !copy.Data().Exists("Data\\Town.ServiceIn"); }));
    EXPECT_EQ(SilenceAlarms(), 1u) << "the failure was known";
    Alarm("10000101");
    EXPECT_TRUE(WaitFor([&] { return SilenceAlarms() == 2; })) << "heard from, and silent again";
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_NE(LastEventsOf("100002").find(";3;"), Text::npos) << LastEventsOf("100002");
    EXPECT_EQ(LastEventsOf("100002").substr(0, 21), heard.substr(0, 21)) << "the last event, over two stops";
}

TEST_F(SupervisionTest, ServicePeriodsAreExchangedAndEndByThemselves) {
    copy.Data().Write("Data\\Town.ServiceIn", "100001;1;20200101000000;20991231000000\r\n");
    Start();
    EXPECT_TRUE(WaitFor([&] { return !copy.Data().Exists("Data\\Town.ServiceIn"); }));
    EXPECT_FALSE(copy.Data().Exists("Data\\Town.ServiceOut")) << "what came from outside is not answered";
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_NE(LastEventsOf("100001").find(";1;20200101000000;20991231000000;"), Text::npos);

    Start();
    copy.Data().Write("Data\\Town.ServiceIn", "100001;1;20200101000000;20200102000000\r\n");
    const Text over = "100001;0;20200101000000;20200102000000\r\n";
    EXPECT_TRUE(WaitFor([&] { return copy.Data().Read("Data\\Town.ServiceOut") == over; }))
        << copy.Data().Read("Data\\Town.ServiceOut");
}

}  // namespace
}  // namespace nordkeep
