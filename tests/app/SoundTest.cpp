#include "tests/app/ground/RunningCopy.h"
#include "tests/doubles/WaveFile.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace nordkeep {
namespace {

constexpr const char* kPlayer = "/usr/bin/aplay";

/// A workstation whose player program writes down how it is called, and then plays on the device that
/// swallows everything.
class SoundTest : public ::testing::Test {
 protected:
    SoundTest() {
        copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Bakery;\r\n");
        copy.AddPort(
            "Port1",
            "PortType=TCPS\r\nBindSocketToAddress=127.0.0.1\r\nPortNumber=" + std::to_string(tcpPort),
            "Robofon=Town");
        copy.Data().Write("Sounds\\alarm.wav", SilentWaveFile());
        setenv("PATH", programs.Path().c_str(), 1);
    }
    ~SoundTest() override { setenv("PATH", searchPath.c_str(), 1); }

    void InstallPlayer() const {
        programs.Write(
            "aplay", "#!/bin/sh\necho \"$@\" >>" + programs.Path() + "/calls\nexec " + kPlayer + " \"$@\"\n");
        ASSERT_EQ(chmod((programs.Path() + "/aplay").c_str(), 0755), 0);
    }
    void Start(int sound) {
        copy.WriteMainSettings("AlarmSound=" + std::to_string(sound) +
                               "\r\nAlarmSoundFile=Sounds\\alarm.wav\r\nAlarmSoundDevice=null\r\n"
                               "AlarmPictureTime=-1\r\nSystemTimerInterval=20\r\n");
        copy.StartWithScreen();
    }
    /// Far more than an ACK takes, and far less than a program that is waited for.
    void ExpectPromptAlarms(int count) const {
        const Caller caller(tcpPort);
        ASSERT_TRUE(caller.IsConnected()) << copy.Output();
        for (int i = 0; i < count; ++i) {
            const auto begin = std::chrono::steady_clock::now();
            caller.Send(RobofonTelegram("10000101"));
            EXPECT_EQ(caller.Receive(1), "\x06");
            EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(1500));
        }
    }
    std::size_t Calls() const {
        const Text calls = programs.Read("calls");
        return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), '\n'));
    }
    std::size_t Complaints() const {
        const std::string output = copy.Output();
        std::size_t found = 0;
        // The check of the files names the sound, too.
        for (std::size_t at = 0;
             (at = output.find("Could not play the alarm sound", at)) != std::string::npos; ++at)
            ++found;
        return found;
    }

    const std::string searchPath = getenv("PATH");
    TempFolder programs{};
    int tcpPort = FreePort();
    RunningCopy copy{};
};

TEST_F(SoundTest, PlaysOnceForEachAlarmOrOverAndOver) {
    if (access(kPlayer, X_OK) != 0) GTEST_SKIP() << "no " << kPlayer;
    InstallPlayer();
    Start(2);
    ExpectPromptAlarms(1);
    EXPECT_TRUE(WaitFor([&] { return Calls() == 1; })) << copy.Output();
    const Text call = "-q -D null " + copy.Data().Path() + "/Sounds/alarm.wav\n";
    EXPECT_EQ(programs.Read("calls"), call);
    EXPECT_EQ(copy.Stop(), 0);
    EXPECT_EQ(programs.Read("calls"), call) << "once is once";

    Start(3);
    ExpectPromptAlarms(1);
    EXPECT_TRUE(WaitFor([&] { return Calls() >= 4; })) << copy.Output();
    EXPECT_EQ(Complaints(), 0u) << copy.Output();
    EXPECT_EQ(copy.Stop(), 0);
}

TEST_F(SoundTest, AMissingFileOrProgramCostsOneLineAndNoTime) {
    for (const bool hasPlayer : {false, true}) {
        if (hasPlayer) {
            if (access(kPlayer, X_OK) != 0) GTEST_SKIP() << "no " << kPlayer;
            InstallPlayer();
            RemoveFile(copy.Data().Resolve("Sounds\\alarm.wav"));
        }
        Start(3);
        ExpectPromptAlarms(1);
        EXPECT_TRUE(WaitFor([&] { return Complaints() == 1; })) << copy.Output();
        ExpectPromptAlarms(20);
        // Behind the first pause before the next attempt.
        if (hasPlayer) {
            EXPECT_TRUE(WaitFor([&] { return Calls() >= 2; }));
        }
        ExpectPromptAlarms(5);
        EXPECT_EQ(Complaints(), 1u) << copy.Output();
        EXPECT_EQ(copy.Stop(), 0);
    }
}

}  // namespace
}  // namespace nordkeep
