#include "runtime/Fields.h"

#include <gtest/gtest.h>

#include <limits>

namespace nordkeep {
namespace {

TEST(GetField, CountsFromZeroAndYieldsEmptyForAMissingField) {
    struct Case {
        const char* text;
        std::size_t number;
        const char* delimiter;
        const char* expected;
    };
    for (const Case& c :
         {Case{"a,b", 2, ",", ""}, Case{"a,b", 1, ",", "b"}, Case{"", 0, ",", ""}, Case{"a,", 1, ",", ""},
          Case{"a,b", ~std::size_t{0}, ",", ""}, Case{",b", 0, ",", ""}, Case{"a::b", 1, "::", ":b"},
          Case{"aXbxc", 1, "x", "c"}, Case{"abc", 0, "", "abc"}, Case{"abc", 1, "", ""}}) {
        EXPECT_EQ(GetField(c.text, c.number, c.delimiter), c.expected) << c.text << " " << c.number;
    }
}

TEST(LeadingNumber, ReadsTheFrontOfTheTextOnly) {
    struct Case {
        const char* text;
        std::int64_t expected;
    };
    for (const Case& c :
         {Case{"12 34", 12}, Case{" \t-5x", -5}, Case{"- 5", 0}, Case{"1.9", 1}, Case{"+7", 7}, Case{"", 0},
          Case{"abc", 0}, Case{"0x10", 0}, Case{"1e3", 1}, Case{"--1", 0},
          Case{"99999999999999999999", std::numeric_limits<std::int64_t>::max()}}) {
        EXPECT_EQ(LeadingNumber(c.text), c.expected) << c.text;
    }
    EXPECT_EQ(LeadingInt16("40000"), 32767);
    EXPECT_EQ(LeadingInt16("-40000"), -32768);
    EXPECT_EQ(LeadingInt32("4000000000"), std::numeric_limits<std::int32_t>::max());
    EXPECT_TRUE(IsTrue("-1"));
    EXPECT_FALSE(IsTrue("yes"));
}

TEST(Texts, AreCutAndFilledByPosition) {
    EXPECT_EQ(Substring("ABCDE", 2, 3), "BCD");
    EXPECT_EQ(Substring("ABCDE", 4, 9), "DE");
    EXPECT_EQ(Substring("ABCDE", 6, 1), "");
    EXPECT_EQ(Substring("ABCDE", 0, 3), "");
    EXPECT_EQ(Substring("ABCDE", 1, -2), "");
    EXPECT_EQ(Digits(7, 3), "007");
    EXPECT_EQ(Digits(1234, 3), "1234");
    EXPECT_EQ(FitWidth("abc", 2), "ab");
    EXPECT_EQ(FitWidth("abc", 4), "abc ");
    EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
}

TEST(Lines, EndInAnyOfTheThreeWays) {
    const std::vector<TextView> expected = {"a", "b", "", "c", "d"};
    EXPECT_EQ(Lines("a\r\nb\n\rc\r\nd"), expected);
    EXPECT_EQ(Lines("a\r\nb\n\rc\r\nd\r\n"), expected);
    EXPECT_TRUE(Lines("").empty());
}

}  // namespace
}  // namespace nordkeep
