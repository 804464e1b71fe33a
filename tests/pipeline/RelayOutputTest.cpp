#include "pipeline/outputs/RelayOutput.h"
#include "tests/doubles/FakeMSComm.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class RelayOutputTest : public ::testing::Test {
 protected:
    RelayOutputTest() {
        language.LoadFrom("3515=No relay\n");
        log.SetRowListener([this](const LogRow& row) { rows.push_back(row.text); });
    }
    std::unique_ptr<RelayOutput> Make(const RelayWiring& wiring) {
        return std::make_unique<RelayOutput>(wiring, serial, log, language);
    }
    FakeMSComm& Line() { return serial.Last(); }

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> rows{};
    FakeSerial serial{};
};

TEST_F(RelayOutputTest, HoldsTheRelayBehindTheLastRequest) {
    for (const bool isRaised : {true, false}) {
        const auto relay =
            Make({.port = 3, .device = "/dev/x", .isRaisedForAlarms = isRaised, .holdSeconds = 2});
        relay->Tick(500);
        EXPECT_EQ(Line().device, "/dev/x");
        EXPECT_EQ(Line().controlLines, std::vector{!isRaised}) << "at rest from the start";
        relay->Request();
        for (int i = 0; i < 3; ++i) relay->Tick(500);
        EXPECT_EQ(Line().controlLines, (std::vector{!isRaised, isRaised}));
        relay->Request();
        for (int i = 0; i < 4; ++i) relay->Tick(500);
        EXPECT_EQ(Line().controlLines.size(), 2u) << "the time starts again";
        relay->Tick(500);
        EXPECT_EQ(Line().controlLines, (std::vector{!isRaised, isRaised, !isRaised}));
        relay->Request();
        relay->Tick(500);
        relay->Close();
        EXPECT_EQ(Line().controlLines.back(), !isRaised);
        EXPECT_FALSE(Line().isOpen);
    }
}

TEST_F(RelayOutputTest, ADelayOfNothingStillTakesATick) {
    const auto relay = Make({.port = 1, .holdSeconds = 0});
    relay->Request();
    relay->Tick(100);
    EXPECT_TRUE(Line().controlLines.back());
    relay->Tick(100);
    EXPECT_FALSE(Line().controlLines.back());
}

TEST_F(RelayOutputTest, ABrokenLineCostsOneLineAndComesBackAtTheRightLevel) {
    const auto relay = Make({.port = 7, .holdSeconds = 3600});
    Line().failure = "no such device";
    relay->Request();
    for (int i = 0; i < 1000; ++i) relay->Tick(100);
    EXPECT_EQ(rows, std::vector<Text>{"No relay (COM7)"});
    Line().failure.clear();
    for (int i = 0; i < 100; ++i) relay->Tick(100);
    EXPECT_EQ(Line().controlLines, std::vector{true});
    Line().Vanish("pulled out");
    relay->Tick(100);
    EXPECT_EQ(rows.size(), 1u) << "it may be back before the next attempt";
    for (int i = 0; i < 100; ++i) relay->Tick(100);
    EXPECT_EQ(rows.size(), 2u) << "a new series of failures";
}

TEST_F(RelayOutputTest, WithoutAPortThereIsNoLine) {
    const auto relay = Make({.port = -1});
    relay->Request();
    relay->Tick(100);
    relay->Close();
    EXPECT_TRUE(serial.made.empty());
}

}  // namespace
}  // namespace nordkeep
