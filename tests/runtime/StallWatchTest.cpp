#include "runtime/StallWatch.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct StallWatchTest : ::testing::Test {
    StallWatchTest() {
        language.LoadFrom("3608=Stood still \n");
        log.SetRowListener([this](const LogRow& row) {
            EXPECT_EQ(row.kind, LogKind::Failure);
            rows.push_back(row.text);
        });
        watch.Start();
        loop.Advance(1000);
    }
    /// The loop serves nobody for so long.
    void Stall(int ms) { skippedMs += ms; }

    /// The loop's own clock, ahead by what the loop was kept busy.
    struct BusyClock : Clock {
        explicit BusyClock(const StallWatchTest& of) : test(of) {}
        OleDate Now() const override { return test.loop.Now(); }
        std::int64_t MonotonicMs() const override { return test.loop.MonotonicMs() + test.skippedMs; }
        std::int64_t UtcMs() const override { return test.loop.UtcMs(); }
        const StallWatchTest& test;
    };

    TempFolder folder{};
    ManualTime loop{};
    int skippedMs = 0;
    BusyClock clock{*this};
    Language language{};
    SysLog log{folder.Tree(), loop};
    std::vector<Text> rows{};
    StallWatch watch{clock, loop, log, language};
};

TEST_F(StallWatchTest, NamesWhatTookTheTime) {
    {
        const StallWatch::Mark quick(watch, "ports");
        Stall(20);
    }
    {
        const StallWatch::Mark slow(watch, "Port7");
        Stall(2600);
    }
    loop.Advance(250);
    EXPECT_EQ(rows, std::vector<Text>{"Stood still 2620 ms (Port7)"});
    loop.Advance(10'000);
    EXPECT_EQ(rows.size(), 1u);
}

TEST_F(StallWatchTest, TellsAStallThatNobodyHasMarked) {
    Stall(1500);
    loop.Advance(250);
    EXPECT_EQ(rows, std::vector<Text>{"Stood still 1500 ms"});
}

TEST_F(StallWatchTest, AWaitThatServesOthersIsNoStall) {
    const StallWatch::Mark outer(watch, "Port1");
    {
        const StallWatch::Mark inner(watch, "duty");
        loop.Advance(30'000);
    }
    Stall(900);
    loop.Advance(250);
    EXPECT_TRUE(rows.empty());
    Stall(3000);
    loop.Advance(250);
    EXPECT_EQ(rows, std::vector<Text>{"Stood still 3000 ms (Port1)"}) << "it stalls, and waits on";
}

}  // namespace
}  // namespace nordkeep
