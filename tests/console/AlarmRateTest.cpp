#include "console/window/AlarmRate.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(AlarmRate, AFloodBeginsAboveTenAMinuteAndEndsBelowFive) {
    AlarmRate rate;
    for (int i = 0; i < 10; ++i) rate.Note(i * 1000);
    EXPECT_FALSE(rate.IsFlood(10'000));
    rate.Note(11'000);
    EXPECT_TRUE(rate.IsFlood(11'000));
    EXPECT_TRUE(rate.IsFlood(65'000)) << "five are left";
    EXPECT_FALSE(rate.IsFlood(67'000));
    for (int i = 0; i < 10'000; ++i) rate.Note(70'000 + i);
    EXPECT_TRUE(rate.IsFlood(80'000));
    EXPECT_FALSE(rate.IsFlood(200'000));
}

}  // namespace
}  // namespace nordkeep
