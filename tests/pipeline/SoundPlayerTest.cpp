#include "pipeline/outputs/SoundPlayer.h"
#include "platform/posix/AplaySound.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/WaveFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace nordkeep {
namespace {

class FakeSound : public SoundDevice {
 public:
    void SetOutput(const Text& name) override { output = name; }
    bool Play(const NativePath& file) override {
        played.push_back(file);
        mode = isBroken ? SoundMode::NotReady : SoundMode::Playing;
        return !isBroken;
    }
    void Stop() override { mode = SoundMode::Stopped; }
    SoundMode Mode() override { return mode; }

    SoundMode mode = SoundMode::Stopped;
    bool isBroken = false;
    Text output{};
    std::vector<NativePath> played{};
};

class SoundPlayerTest : public ::testing::Test {
 protected:
    SoundPlayerTest() {
        language.LoadFrom("3517=No sound \n");
        log.SetRowListener([this](const LogRow& row) { lines.push_back(row.text); });
    }
    void Ticks(int count, SoundPlayer& of) const {
        for (int i = 0; i < count; ++i) of.Tick(100);
    }

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> lines{};
    FakeSound device{};
    SoundPlayer player{{folder.Tree(), language, log, device}, {"Sounds\\alarm.wav", "hw:1"}};
};

TEST_F(SoundPlayerTest, PlaysOnceOrOverAndOver) {
    Ticks(3, player);
    EXPECT_TRUE(device.played.empty());
    EXPECT_EQ(device.output, "hw:1");
    player.Request(SoundRequest::Once);
    Ticks(3, player);
    EXPECT_EQ(device.played, std::vector{folder.Resolve("Sounds\\alarm.wav")});
    device.mode = SoundMode::Stopped;
    Ticks(3, player);
    EXPECT_EQ(device.played.size(), 1u);
    EXPECT_FALSE(player.IsSounding());

    player.Request(SoundRequest::Repeat);
    Ticks(2, player);
    player.Request(SoundRequest::Once);
    player.Request(SoundRequest::Repeat);
    Ticks(2, player);
    EXPECT_EQ(device.played.size(), 2u) << "a repeating sound is not started over";
    device.mode = SoundMode::Stopped;
    Ticks(1, player);
    EXPECT_EQ(device.played.size(), 3u);
    player.Silence();
    Ticks(3, player);
    EXPECT_EQ(device.played.size(), 3u);
    EXPECT_EQ(device.mode, SoundMode::Stopped);
    EXPECT_TRUE(lines.empty());
}

TEST_F(SoundPlayerTest, AMoreUrgentAlarmTakesTheSoundOver) {
    player.UseSound({.file = "all.wav", .device = {}, .ofPriority = {"1.wav", "", "3.wav"}});
    const auto playedLast = [&] {
        device.mode = SoundMode::Stopped;
        Ticks(2, player);
        return device.played.back();
    };
    player.Request(SoundRequest::Repeat, 7);
    EXPECT_EQ(playedLast(), folder.Resolve("3.wav"));
    player.Request(SoundRequest::Repeat, 2);
    EXPECT_EQ(playedLast(), folder.Resolve("all.wav")) << "without one of its own";
    player.Request(SoundRequest::Repeat, 1);
    player.Request(SoundRequest::Repeat, 3);
    EXPECT_EQ(playedLast(), folder.Resolve("1.wav"));
    player.Silence();
    player.Request(SoundRequest::Repeat, 3);
    EXPECT_EQ(playedLast(), folder.Resolve("3.wav"));
}

TEST_F(SoundPlayerTest, AFailingSoundCostsOneLineAndBacksOff) {
    device.isBroken = true;
    player.Request(SoundRequest::Repeat);
    Ticks(10 * 60 * 10, player);
    EXPECT_GT(device.played.size(), 10u);
    EXPECT_LT(device.played.size(), 20u) << "in ten minutes";
    EXPECT_EQ(lines, std::vector<Text>{"No sound Sounds\\alarm.wav"});

    device.isBroken = false;
    Ticks(10 * 61, player);
    EXPECT_EQ(device.mode, SoundMode::Playing) << "the device is back";
    device.mode = SoundMode::Stopped;
    Ticks(1, player);
    device.mode = SoundMode::NotReady;
    Ticks(1, player);
    EXPECT_EQ(lines.size(), 2u) << "a new series of failures";
}

TEST_F(SoundPlayerTest, TheSystemsPlayerPlaysAndFails) {
    AplaySound aplay;
    SoundPlayer real({folder.Tree(), language, log, aplay}, {"Sounds\\alarm.wav", "null"});
    const auto playToTheEnd = [&] {
        real.Request(SoundRequest::Once);
        real.Tick(100);
        for (int i = 0; i < 6000 && real.IsSounding(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            real.Tick(100);
        }
        EXPECT_FALSE(real.IsSounding());
    };
    folder.Write("Sounds\\alarm.wav", SilentWaveFile());
    playToTheEnd();
    EXPECT_TRUE(lines.empty());
    RemoveFile(folder.Resolve("Sounds\\alarm.wav"));
    playToTheEnd();
    playToTheEnd();
    EXPECT_EQ(lines, std::vector<Text>{"No sound Sounds\\alarm.wav"});
}

}  // namespace
}  // namespace nordkeep
