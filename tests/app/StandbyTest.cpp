#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/ServiceManager.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>

namespace nordkeep {
namespace {

/// Two services on one data folder, as two machines with one disk.
class StandbyTest : public ::testing::Test {
 protected:
    StandbyTest() {
        first.WriteMainSettings("MaxAlarms=0\r\n");
        folder.Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        first.AddPort("Port1",
                      "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(port),
                      "Robofon=Town");
    }
    std::size_t ReadableEvents() const {
        std::size_t readable = 0;
        for (const Text& file : first.EventFiles()) {
            cAlarm alarm;
            readable += ReadFromDisk(folder.Read(file), 1, alarm).has_value();
        }
        return readable;
    }

    TempFolder folder{};
    RunningCopy first{folder};
    RunningCopy second{folder};
    int port = FreePort();
};

TEST_F(StandbyTest, TakesOverUnderLoadAndLosesNothing) {
    std::mt19937 random(3);
    std::size_t acknowledged = 0;
    Text burst;
    for (int i = 0; i < 200; ++i) burst += RobofonTelegram("10000101");
    RunningCopy* active = &first;
    RunningCopy* standby = &second;
    active->Start();
    for (int round = 0; round < 6; ++round) {
        standby->StartStandby();
        Caller caller(port);
        caller.Send(burst);
        acknowledged += caller.Receive(1 + random() % 150).size();
        const auto killed = std::chrono::steady_clock::now();
        active->Kill();
        acknowledged += caller.Receive(10'000).size();
        Caller again(port);
        again.Send(RobofonTelegram("10000101"));
        ASSERT_EQ(again.Receive(1), "\x06");
        ++acknowledged;
        const auto took =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - killed);
        RecordProperty("ms to the first reply of round " + std::to_string(round),
                       std::to_string(took.count()));
        std::swap(active, standby);
    }
    EXPECT_EQ(active->Stop(), 0);
    EXPECT_GE(ReadableEvents(), acknowledged);
}

TEST_F(StandbyTest, IsReadyWhileItWaitsAndEndsAtOnce) {
    first.Start();
    Manager manager;
    second.StartStandby();
    EXPECT_TRUE(manager.Hears("READY=1"));
    EXPECT_TRUE(manager.Hears("WATCHDOG=1")) << "waiting is no hang";
    EXPECT_EQ(second.Stop(), 0);
    Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06") << "and the other one never noticed";
}

// What the active copy did while the other one waited is what that one starts with.
TEST_F(StandbyTest, LoadsOnlyWhenItsTurnHasCome) {
    first.Start();
    second.StartStandby();
    folder.Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Renamed;\r\n");
    EXPECT_EQ(first.Stop(), 0);
    Caller caller(port);
    caller.Send(RobofonTelegram("10000101"));
    EXPECT_EQ(caller.Receive(1), "\x06");
    ASSERT_EQ(first.EventFiles().size(), 1u);
    cAlarm alarm;
    ASSERT_TRUE(ReadFromDisk(folder.Read(first.EventFiles()[0]), 1, alarm));
    EXPECT_EQ(alarm.m_TranslatedIDCode, "Renamed");
}

}  // namespace
}  // namespace nordkeep
