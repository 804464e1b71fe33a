#include "translation/IdCodeFile.h"
#include "translation/SetText.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

Text Written(const std::vector<SetLine>& lines) {
    Text text;
    for (const SetLine& line : lines) text += line.text + "|";
    return text;
}

TEST(SetText, CommentsBetweenRowsMoveBehindThem) {
    EXPECT_EQ(Written(IdCodeLines("; a\r\n\r\n1;x\r\n; b\r\n2;y\r\n;c")), "; a||1;x|2;y|; b|;c|");
    EXPECT_EQ(Written(TypeCodeLines("01;1;Fire\n; b\nFORMAT=1,2;x\n")), "01;1;Fire|FORMAT=1,2;x|; b|")
        << "types have no directives";
}

TEST(SetText, OfTwoDirectivesTheFirstStaysTheOneThatCounts) {
    const Text moved = Written(IdCodeLines("1;x\r\nformat=1,4\r\nFORMAT=2,3\r\nZEROTRIM=1\r\n"));
    EXPECT_EQ(moved, "format=1,4|ZEROTRIM=1|1;x|FORMAT=2,3|");
}

TEST(SetText, ARowIsWrittenInItsNormalForm) {
    const struct {
        const char* before;
        const char* after;
    } rows[] = {
        {"1234/0701234567;Shop Storgatan;1440;Plan1/120/455;;;Customer A;1;0;;08:00:00-09:00:00",
         "1234/0701234567;Shop Storgatan;1440;Plan1/120/455;;;Customer A;1;0;;08:00:00-09:00:00;"},
        {" ab ;  Name as it stands ;0;;;;;;;;", "AB;  Name as it stands ;;;;;;1;0;;;"},
        {"123/456/789;x", "123/456;x;;;;;;1;0;;;"},
        {"1;x;00:30:00;;;;;yes;1;;-5", "1;x;;;;;;0;1;;;"},
        {"1;x;;;;;;;;;;a note of somebody", "1;x;;;;;;1;0;;;a note of somebody"},
        {"no separator", "NO SEPARATOR;;;;;;;1;0;;;"},
    };
    for (const auto& row : rows) EXPECT_EQ(ObjectRow(ValuesOfObject(row.before), row.before), row.after);
    EXPECT_EQ(TypeRow(ValuesOfType(" 01 ;1; Fire ;02"), {}), "01;1;Fire;02;");
}

TEST(SetText, ALossIsToldOnlyWhereSomethingIsLost) {
    EXPECT_TRUE(LosesSchedule(ValuesOfObject("1;x;00:30:00")));
    EXPECT_TRUE(LosesSchedule(ValuesOfObject("1;x;;;;;;;;;00:00:00-06:00:00")));
    EXPECT_FALSE(LosesSchedule(ValuesOfObject("1;x;0")));
    EXPECT_FALSE(LosesSchedule(ValuesOfObject("1;x;24:00:00")));
    EXPECT_FALSE(LosesSchedule(ValuesOfObject("1;x;60;;;;;;;;")));
}

TEST(SetText, WhatIsWrittenReadsAsTheSameObject) {
    for (const char* row : {"1/2;n;60;M/1/2;e;f;c;0;1;r;07:00:00", "1;n;;;;;;1;0;;", "\xE5\xE4;n"}) {
        const Text written = ObjectRow(ValuesOfObject(row), row);
        EXPECT_EQ(ValuesOfObject(written), ValuesOfObject(row)) << row;
        EXPECT_EQ(ObjectRow(ValuesOfObject(written), written), written) << "once and for all";
    }
}

}  // namespace
}  // namespace nordkeep
