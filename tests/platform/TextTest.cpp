#include "platform/Text.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

Text EveryCharacter() {
    Text all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    return all;
}

TEST(Text, UpperCaseChangesLettersOnly) {
    EXPECT_EQ(UpperCase("az\xE5\xE4\xF6\xE9\xFE\xFF\x9A\x9C\x9E"), "AZ\xC5\xC4\xD6\xC9\xDE\x9F\x8A\x8C\x8E");
    const Text unchanged = "AZ09[`{\xDF\xF7\xD7\xB5\x83\xAA\xBA\x9F";
    EXPECT_EQ(UpperCase(unchanged), unchanged);
    const Text once = UpperCase(EveryCharacter());
    EXPECT_EQ(once.size(), 256u);
    EXPECT_EQ(UpperCase(once), once);
}

TEST(Text, ComparesByUpperCasedUnsignedBytes) {
    EXPECT_TRUE(EqualsNoCase("\xE5n", "\xC5N"));
    EXPECT_FALSE(EqualsNoCase("ab", TextView("ab\0", 3)));
    EXPECT_LT(CompareNoCase("z", "\xE5"), 0);
    EXPECT_LT(CompareNoCase("ab", "ABC"), 0);
    EXPECT_GT(CompareNoCase("_", "a"), 0);  // the underline stands behind the capitals
}

TEST(Text, FindsWithoutRegardToCase) {
    EXPECT_EQ(FindNoCase("xx[Name]", "[NAME]"), 2u);
    EXPECT_EQ(FindNoCase("aAa", "a", 1), 1u);
    EXPECT_EQ(FindNoCase("abc", "d"), TextView::npos);
    EXPECT_EQ(FindNoCase("abc", "", 3), 3u);
    EXPECT_EQ(FindNoCase("abc", "", 4), TextView::npos);
}

TEST(Text, TrimsBlanksButNoOtherSpace) {
    EXPECT_EQ(TrimBlanks("  a b\t "), "a b\t");
    EXPECT_EQ(TrimBlanksAndTabs(" \t a\xA0\t "), "a\xA0");
    EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(Text, EveryCharacterSurvivesUtf8) {
    EXPECT_EQ(FromUtf8(ToUtf8(EveryCharacter())), EveryCharacter());
    EXPECT_EQ(ToUtf8("\x80\x81\xC5\x9F"), "\xE2\x82\xAC\xC2\x81\xC3\x85\xC5\xB8");
}

TEST(Text, WhatHasNoPlaceBecomesTheStandIn) {
    struct Case {
        std::string_view utf8;
        Text expected;
    };
    const Case cases[] = {
        {"\xCE\xB1", "?"},             // a Greek letter
        {"\xF0\x9F\x94\x94", "?"},     // four bytes
        {"a\xCC\x88", "a?"},           // a combining mark
        {"\xC3", "?"},                 // cut off
        {"\xC3(", "?("},               // broken sequence
        {"\xC0\xAF", "??"},            // longer than need be
        {"\xE0\x80\xAF", "???"},       // the same in three bytes
        {"\xC5\xE4\xF6", "???"},       // not UTF-8 at all
        {"\xC2\x80", "?"},             // a control character whose byte means the euro sign here
        {"\xF5\x80\x80\x80", "????"},  // beyond the last code point
    };
    for (const Case& c : cases) EXPECT_EQ(FromUtf8(c.utf8), c.expected);
}

}  // namespace
}  // namespace nordkeep
