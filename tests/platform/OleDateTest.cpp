#include "platform/OleDate.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace nordkeep {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(OleDate, EverySecondOfADaySplitsAsItWasPutTogether) {
    for (int second = 0; second < 86400; ++second) {
        const CivilTime civil{2024, 3, 5, second / 3600, second / 60 % 60, second % 60};
        ASSERT_EQ(OleDate::FromCivil(civil).Civil(), civil);
        ASSERT_EQ(OleDate::FromCivil(civil).SecondOfDay(), second);
    }
}

TEST(OleDate, FractionsOfASecondAreCut) {
    const OleDate date = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}, 700);
    EXPECT_EQ(date.Civil(), (CivilTime{2024, 3, 5, 7, 8, 9}));
    // One representable value below the whole second still is that second.
    const double whole = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}).Days();
    EXPECT_EQ(OleDate::FromDays(std::nextafter(whole, 0.0)).Civil().second, 9);
}

TEST(OleDate, KeepsAStoredValueAsItIs) {
    for (const double days : {45356.297326388891, 45356.2973263888, -1.25, 1e300, -0.0, kNaN, kInfinity}) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(OleDate::FromDays(days).Days()),
                  std::bit_cast<std::uint64_t>(days));
    }
}

TEST(OleDate, SplitsKnownDays) {
    struct Case {
        double days;
        CivilTime expected;
    };
    const Case cases[] = {
        {0, {1899, 12, 30, 0, 0, 0}},     {1, {1899, 12, 31, 0, 0, 0}},
        {2.25, {1900, 1, 1, 6, 0, 0}},    {45356, {2024, 3, 5, 0, 0, 0}},
        {-1.25, {1899, 12, 29, 6, 0, 0}}, {-0.5, {1899, 12, 30, 12, 0, 0}},
        {-657434, {100, 1, 1, 0, 0, 0}},  {2958465.999, {9999, 12, 31, 23, 58, 33}},
        {60, {1900, 2, 28, 0, 0, 0}},     {61, {1900, 3, 1, 0, 0, 0}},
    };
    for (const Case& c : cases) EXPECT_EQ(OleDate::FromDays(c.days).Civil(), c.expected) << c.days;
    EXPECT_EQ(OleDate::FromCivil({1899, 12, 29, 6, 0, 0}).Days(), -1.25);
}

TEST(OleDate, WhatIsNoDateCountsAsNever) {
    for (const double days : {kNaN, kInfinity, -kInfinity, 1e300, -1e300, 2958466.0, -657435.0}) {
        EXPECT_TRUE(OleDate::FromDays(days).IsNever()) << days;
        EXPECT_EQ(OleDate::FromDays(days), OleDate()) << days;
    }
}

TEST(OleDate, OutOfRangeNumbersAreCarriedOver) {
    EXPECT_EQ(OleDate::FromCivil({2024, 13, 1, 0, 75, 0}), OleDate::FromCivil({2025, 1, 1, 1, 15, 0}));
    EXPECT_EQ(OleDate::FromCivil({2024, 0, 31, 0, 0, -1}), OleDate::FromCivil({2023, 12, 30, 23, 59, 59}));
    EXPECT_EQ(OleDate::FromCivil({2023, 2, 29, 24, 0, 0}), OleDate::FromCivil({2023, 3, 2, 0, 0, 0}));
}

TEST(OleDate, MovesAndComparesByMilliseconds) {
    const OleDate date = OleDate::FromCivil({2024, 2, 28, 23, 59, 59});
    EXPECT_EQ(date.PlusSeconds(1), OleDate::FromCivil({2024, 2, 29, 0, 0, 0}));
    EXPECT_EQ(date.PlusDays(2), OleDate::FromCivil({2024, 3, 1, 23, 59, 59}));
    EXPECT_LT(date, date.PlusMilliseconds(1));
    EXPECT_EQ(date.Midnight(), OleDate::FromCivil({2024, 2, 28, 0, 0, 0}));
    EXPECT_EQ(date.Weekday(), 3);
    EXPECT_EQ(OleDate::FromDays(-1.25).Midnight(), OleDate::FromDays(-1));
    EXPECT_EQ(OleDate::FromDays(-1.25).PlusDays(2), OleDate::FromDays(1.25));
}

}  // namespace
}  // namespace nordkeep
