#include "ports/Robofon.h"
#include "ports/RobofonExport.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2024, 5, 17, 13, 45, 30});
const Text kTelegram =
    FromHex("02 20 20 50 32 34 30 35 31 37 31 33 34 35 00 30 31 32 33 34 30 30 30 31 03 60");

/// An export line with the time in the test's hand.
struct Line {
    RobofonExport queue;
    std::int64_t ms = 0;

    explicit Line(RobofonExportSettings settings = {}) : queue(std::move(settings)) { TickAt(0); }
    TelegramStep TickAt(std::int64_t atMs, bool canSend = true) {
        ms = atMs;
        return queue.Tick({.now = kNow, .monotonicMs = atMs, .canSend = canSend});
    }
};

TEST(RobofonExport, BuildsWhatARobofonPortDecodes) {
    EXPECT_EQ(ExportBytes({.text = "12340001", .classCode = "30"}, kNow), kTelegram);
    struct Case {
        const char* id;
        const char* classCode;
        Text facts;
    };
    for (const Case& c :
         {Case{"12340001", "30", "label=2000; code=12340001; number=1; line=0:0; raw=12340001"},
          Case{"12", "42", "label=2011; code=12; number=12; line=0:0; raw=12"},
          Case{"123456789", "", "label=2000; code=12345678; number=1; line=0:0; raw=12345678"},
          Case{"1", "xy", "label=2000; code=1; number=1; line=0:0; raw=1"},
          Case{"1", "100", "label=2000; code=1; number=1; line=0:0; raw=1"},
          Case{"1", "07", "code=1; number=0; line=0:0; raw=1"}}) {
        const TelegramStep step =
            NextRobofonStep(ExportBytes({.text = c.id, .classCode = c.classCode}, kNow), {}, kNow);
        ASSERT_EQ(step.events.size(), 1u) << c.classCode;
        EXPECT_EQ(Facts(step.events[0], kNow), c.facts) << c.classCode;
    }
}

TEST(RobofonExport, RepeatsUntilAcknowledgedAndGivesUpAfterTheRetries) {
    Line line({.RBM600ExportRetries = 1,
               .RBM600ExportTimeout = 2500,
               .PortDescription = "out",
               .droppedText = " lost"});
    line.queue.Add("12340001", "30");
    line.queue.Add("5", "30");
    EXPECT_EQ(line.TickAt(1000, false).reply, "");
    EXPECT_EQ(line.TickAt(2000).reply, kTelegram);
    EXPECT_EQ(line.TickAt(3999).reply, "");
    // Whole seconds count, and a time that has just been reached has passed.
    EXPECT_EQ(line.TickAt(4000).reply, kTelegram);
    EXPECT_TRUE(line.TickAt(5999).notes.empty());
    const TelegramStep dropped = line.TickAt(6000);
    ASSERT_EQ(dropped.notes.size(), 1u);
    EXPECT_EQ(dropped.notes[0].text, 1035);
    EXPECT_EQ(dropped.notes[0].tail, "out lost (12340001)");
    EXPECT_EQ(dropped.reply.substr(16, 8), "5       ");
    EXPECT_EQ(line.queue.Size(), 1u);
}

TEST(RobofonExport, TakesAnAcknowledgementForWhatWasSentOnly) {
    Line line;
    line.queue.Add("1", "30");
    line.queue.Add("2", "30");
    EXPECT_EQ(line.queue.Receive("\x06").consumed, 1u);
    EXPECT_EQ(line.queue.Size(), 2u);
    line.TickAt(1000);
    EXPECT_FALSE(line.queue.Receive("\x15zz").isTraffic);
    EXPECT_EQ(line.queue.Size(), 2u);
    const TelegramStep step = line.queue.Receive("x\x06\x06y");
    EXPECT_TRUE(step.isTraffic);
    EXPECT_EQ(step.consumed, 4u);
    EXPECT_EQ(line.queue.Size(), 1u);
    EXPECT_EQ(line.TickAt(1000).reply.substr(16, 8), "2       ");
}

TEST(RobofonExport, TestsAnIdleLine) {
    Line line({.RBM600ExportTestTelegramInterval = 10});
    EXPECT_EQ(line.TickAt(14'999).reply, "");
    EXPECT_EQ(line.TickAt(15'000).reply, "\x07");
    EXPECT_EQ(line.TickAt(24'999).reply, "");
    line.queue.Add("1", "30");
    line.TickAt(24'999);
    line.queue.Receive("\x06");
    EXPECT_EQ(line.TickAt(34'998).reply, "");
    EXPECT_EQ(line.TickAt(34'999).reply, "\x07");
    EXPECT_EQ(Line().TickAt(1LL << 40).reply, "");
}

TEST(RobofonExport, BoundsTheQueueOfALineThatNeverOpens) {
    Line line;
    for (int i = 0; i < 10'003; ++i) line.queue.Add(std::to_string(i), "30");
    EXPECT_EQ(line.queue.Size(), 10'000u);
    EXPECT_EQ(line.TickAt(1, false).notes.size(), 3u);
    EXPECT_EQ(line.TickAt(2).reply.substr(16, 8), "3       ");
}

TEST(ExportQueues, PassATelegramToEveryPort) {
    ExportQueues queues;
    const auto first = std::make_shared<RobofonExport>(RobofonExportSettings{});
    const auto second = std::make_shared<RobofonExport>(RobofonExportSettings{});
    queues.Add(first);
    queues.Add(second);
    queues.ExportTelegram("1", "30");
    EXPECT_EQ(first->Size() + second->Size(), 2u);
}

}  // namespace
}  // namespace nordkeep
