#include "tests/doubles/ManualTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace nordkeep {
namespace {

TEST(ManualTime, RunsWhatIsPlannedInTheOrderOfTime) {
    ManualTime time;
    std::string order;
    time.After(20, [&] { order += "20 "; });
    time.After(10, [&] { order += "10 "; });
    time.Post([&] { order += "now "; });
    const auto timer = time.NewTimer([&] { order += "tick "; });
    timer->Start(15);
    time.Advance(30);
    EXPECT_EQ(order, "now 10 tick 20 tick ");
    EXPECT_EQ(time.MonotonicMs(), 30);
}

TEST(ManualTime, TicksNestInAWaitOfTheirOwnHandler) {
    ManualTime time;
    int depth = 0;
    int deepest = 0;
    const auto timer = time.NewTimer([&] {
        deepest = std::max(deepest, ++depth);
        if (depth < 3) time.SleepAndPump(25);
        --depth;
    });
    timer->Start(10);
    time.Advance(10);
    EXPECT_EQ(deepest, 3);
    EXPECT_EQ(time.MonotonicMs(), 45);
    timer->Stop();
    time.Advance(100);
    EXPECT_EQ(time.PlannedCount(), 0u);
}

TEST(ManualTime, SettingTheClockMovesNoPlan) {
    ManualTime time(OleDate::FromCivil({2024, 3, 31, 1, 59, 0}));
    int ticks = 0;
    const auto timer = time.NewTimer([&] { ++ticks; });
    timer->Start(1000);
    time.Set(OleDate::FromCivil({2025, 1, 1, 0, 0, 0}));
    time.Advance(2000);
    EXPECT_EQ(ticks, 2);
    EXPECT_EQ(time.Now(), OleDate::FromCivil({2025, 1, 1, 0, 0, 2}));
}

}  // namespace
}  // namespace nordkeep
