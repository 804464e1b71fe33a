#include "store/AlarmText.h"
#include "store/TextTemplate.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

struct AlarmTextTest : testing::Test {
    Text Build(TextView format, HeaderMode mode = HeaderMode::Values) {
        return texts.BuildAlarmText({format, "YYYY-MM-DD", "HH:NN:SS"}, alarm, mode);
    }
    TempFolder folder{};
    Language language{};
    AlarmText texts{folder.Tree(), language};
    cAlarm alarm{};
};

TEST_F(AlarmTextTest, WhatIsNoPlaceholderStaysAsItStands) {
    alarm.m_TranslatedIDCode = "[DATE]";
    for (const char* text : {"[NOSUCH]", "[0]", "[256]", "[ DATE]", "[99999999999]", "[-1]", "[", "[DATE",
                             "]", "[]", "[:0-1]", "plain", "[1 ]", "[[", "[DATE[", ""}) {
        EXPECT_EQ(Build(text), text);
    }
    EXPECT_EQ(Build("[TRIDCODE][trIDcode]"), "[DATE][DATE]") << "values are not expanded again";
    EXPECT_EQ(Build("[[STATUS]"), "[0");
    EXPECT_EQ(Build("a[X[STATUS]b]"), "a[X0b]");
    EXPECT_EQ(Build("[65][013][255]"), "A\r\xFF");
}

TEST_F(AlarmTextTest, RangesWidthsAndCommands) {
    struct Case {
        const char* format;
        const char* value;
        const char* expected;
    };
    for (const Case& c : {
             Case{"[X::5]", "ABCDEFG", "ABCDE"},
             {"[X::5]", "AB", "AB   "},
             {"[X::0]", "AB", ""},
             {"[X::-3]", "AB", ""},
             {"[X::]", "AB", "AB"},
             {"[X:2]", "ABCDE", "C"},
             {"[X:0-3]", "ABCDE", "ABCD"},
             {"[X:-3]", "ABCDE", "ABCD"},
             {"[X:0-0]", "ABCDE", "A"},
             {"[X:2-0]", "ABCDE", "C"},
             {"[X:3-1]", "ABCDE", "D"},
             {"[X:z]", "ABCDE", "A"},
             {"[X:1-99]", "ABC", "BC"},
             {"[X:9]", "ABC", ""},
             {"[X:3-9:4]", "ABCDE", "DE  "},
             {"[X:0-9999999999999999999]", "AB", "AB"},
             {"[CU:X][X]", "AXB", "B"},
             {"[CF:X][X]", "AXB", "A"},
             {"[CUTUNTIL:x][X]", "aXb", "b"},
             {"[CutFrom:\xE5][X]",
              "a\xC5"
              "b",
              "a"},
             {"[CU:Q][X]", "AXB", "AXB"},
             {"[CU:][X]", "AXB", "AXB"},
             {"[CU][X]", "AXB", "AXB"},
             {"[R:A:B][X]", "aAa", "BBB"},
             {"[R:a:\xE5][X]", "bab",
              "b\xC5"
              "b"},
             {"[R::N/A][X]", "", ""},
             {"[R::N/A][X]", "X", "N/A"},
             {"[R:a:A][X]", "zz", "A"},
             {"[R:aa:a][X]", "AAAA", "AA"},
             {"[R:old][X]", "Xoldy", "Xy"},
             {"[R:s:\xDF][X]", "Sa",
              "\xDF"
              "a"},
             {"[CU:3][X::4]", "12345", "4"},
             {"[CU:b][CF:d][X]", "abcde", "c"},
             {"[R:a:b]-[CU:b][X][X]", "a1", "-1a1"},
             {"[CU:A][65][X]", "xAy", "xAy"},
             {"[R:x:y:z:w][X]", "x", "Y"},
             {"[CU:1:9:4][X]", "123", "23"},
             {"[CU:A][NOSUCH][X]", "1A2", "[NOSUCH]2"},
             {"[X][CU:1]", "1", "1"},
         }) {
        Text seen;
        const Text got = ExpandTemplate(c.format, [&](TextView name) -> std::optional<Text> {
            return name == "X" ? std::optional<Text>(c.value) : std::nullopt;
        });
        EXPECT_EQ(got, c.expected) << c.format << " on " << c.value;
    }
    EXPECT_EQ(Build("[STATUS::99999999999]").size(), 65535u) << "a mistyped width must not fill the memory";
}

TEST_F(AlarmTextTest, EveryFieldHasItsOwnValueAndHeading) {
    alarm.m_FilePointer = 17;
    alarm.m_SentToTorvex = -1;
    alarm.m_Repeated = -1;
    alarm.m_AlarmId = 9999;
    alarm.m_TimeStamp = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}, 700);
    alarm.m_Originator = "070";
    EXPECT_EQ(Build("[STATUS][REPEATED] [FILEPOINTER] [SENTTOTORVEX] [ALARMID] [NUMBER][ORIGINATOR]"),
              "0-1 17 1 9999 070");
    EXPECT_EQ(Build("[Date]|[Time]|[DateTime]|[AckDateTime]"),
              "2024-03-05|07:08:09|2024-03-05 07:08:09|1899-12-30 00:00:00");
    Text torvex;
    for (alarm.m_Status = -1; alarm.m_Status <= 6; ++alarm.m_Status) torvex += Build("[TORVEXSTATUS]");
    EXPECT_EQ(torvex, "11111000");

    language.LoadFrom("910=Status\n942=Kund\n980=Linjekort\n989=URL\n");
    EXPECT_EQ(Build("[STATUS::8]|[R:k:h][CUSTOMER]|[LINECARDNUMBER:0-4]|[URL]|[65]", HeaderMode::Headings),
              "Status  |Hund|Linje|URL|A");
    for (int i = 0; i < kAlarmFieldCount; ++i) EXPECT_EQ(AlarmFieldHeading(i), i < 33 ? 910 + i : 947 + i);
}

TEST_F(AlarmTextTest, ObjectFilesAreReadBelowTheirFolderOnly) {
    folder.Write("Information\\Set\\1234.txt", "one\r\n\r\ntwo\n");
    folder.Write("Information\\Set\\1234\\31.TXT", "special");
    folder.Write("Information\\secret.TXT", "secret");
    alarm.m_TranslationFile = "set";
    alarm.m_IdCode = "1234";
    alarm.m_TypeCode = "31";
    EXPECT_EQ(Build("[OBJECTCOMMENTS]|[OBJECTSPECIFICTYPECODE]"), "one\\n\\ntwo|special");
    for (const Text& code :
         {Text("9999"), Text(""), Text(".."), Text("..\\secret"), Text("../secret"), Text("C:x"),
          Text("12\0"
               "34",
               5)}) {
        alarm.m_IdCode = code;
        EXPECT_EQ(Build("[OBJECTCOMMENTS]|[OBJECTSPECIFICTYPECODE]"), "|") << code;
    }
    alarm.m_TranslationFile = "";
    alarm.m_IdCode = "secret";
    EXPECT_EQ(Build("[OBJECTCOMMENTS]"), "");
}

TEST(AlarmColumns, StopAtTheFirstEmptyNameAndLeaveOutUnknownOnes) {
    EXPECT_EQ(ParseColumns("trprio,Nosuch,DATE,,TIME"), (std::vector<int>{13, 2}));
    EXPECT_TRUE(ParseColumns("").empty());
    const std::vector<int> all = ParseColumns(DefaultColumns() + ",STATUS");
    ASSERT_EQ(all.size(), 43u);
    for (int i = 0; i < kAlarmFieldCount; ++i) EXPECT_EQ(all[static_cast<std::size_t>(i)], i);
}

}  // namespace
}  // namespace nordkeep
