#include "reports/AlarmFlood.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(AlarmFlood, BeginsAboveTenInTenMinutesAndEndsBelowFive) {
    constexpr std::int64_t kMinute = 60'000;
    AlarmFlood flood;
    for (int i = 0; i < 10; ++i) flood.Note(i * kMinute / 2);
    EXPECT_FALSE(flood.IsFlood(5 * kMinute));
    EXPECT_FALSE(flood.EndMs());
    flood.Note(5 * kMinute);
    EXPECT_TRUE(flood.IsFlood(5 * kMinute));
    EXPECT_EQ(flood.EndMs(), 13 * kMinute) << "the fifth newest is of minute three";
    EXPECT_TRUE(flood.IsFlood(13 * kMinute - 1));
    EXPECT_FALSE(flood.IsFlood(13 * kMinute));
    for (int i = 0; i < 10'000; ++i) flood.Note(20 * kMinute + i);
    EXPECT_TRUE(flood.IsFlood(29 * kMinute));
    EXPECT_FALSE(flood.IsFlood(31 * kMinute));
}

}  // namespace
}  // namespace nordkeep
