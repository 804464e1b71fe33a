#include "runtime/IniText.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(IniText, FindsValuesTheWayProfileFunctionsDo) {
    const IniText ini(
        "\xEF\xBB\xBF[General]\r\n"
        ";Commented=1\n"
        "#Hash=2\r"
        "  Spaced Key \t=  value  ; kept \r\n"
        "Quoted=\"  inner  \"\r\n"
        "Half=\"open\r\n"
        "Equals=a=b\r\n"
        "Empty=\r\n"
        "no key here\r\n"
        "Twice=first\r\nTwice=second\r\n"
        " [ Other ] trailing\r\nKey=other\r\n"
        "[general]\r\nLate=1\r\n"
        "[Last]\r\nLongKey=no\r\nKey=last");
    struct Case {
        const char* section;
        const char* key;
        std::optional<Text> expected;
    };
    for (const Case& c :
         {Case{"GENERAL", "spaced key", "value  ; kept"}, Case{"General", "Quoted", "  inner  "},
          Case{"General", "Half", "\"open"}, Case{"General", "Equals", "a=b"}, Case{"General", "Empty", ""},
          Case{"General", "#Hash", "2"}, Case{"General", "Commented", std::nullopt},
          Case{"General", "Twice", "first"}, Case{"other", "KEY", "other"},
          Case{"General", "Late", std::nullopt}, Case{"Last", "Key", "last"},
          Case{"Missing", "Key", std::nullopt}}) {
        EXPECT_EQ(ini.Value(c.section, c.key), c.expected) << c.section << " " << c.key;
    }
    EXPECT_EQ(IniText("[A]\nK=" + Text(3000, 'x')).Value("A", "K")->size(), 2047u);
}

TEST(IniText, ChangesOneValueAndNoOtherByte) {
    const Text before = "; head\n[A]\nKey = old ; x\nOther=1\n\n\n[B]\r\nKey=2";
    EXPECT_EQ(IniText(before).WithValue("a", "KEY", "new"),
              "; head\n[A]\nKey=new\nOther=1\n\n\n[B]\r\nKey=2");
    EXPECT_EQ(IniText(before).WithValue("A", "Added", "3"),
              "; head\n[A]\nKey = old ; x\nOther=1\nAdded=3\r\n\n\n[B]\r\nKey=2");
    EXPECT_EQ(IniText(before).WithValue("B", "Added", "3"), before + "\r\nAdded=3\r\n");
    EXPECT_EQ(IniText(before).WithValue("C", "New", ""), before + "\r\n[C]\r\nNew=\r\n");
    EXPECT_EQ(IniText("").WithValue("A", "K", "v"), "[A]\r\nK=v\r\n");
    EXPECT_EQ(IniText("[A]").WithValue("A", "K", "v"), "[A]\r\nK=v\r\n");
}

TEST(IniText, OverwritesAValueOnlyWhenItsLineKeepsItsLength) {
    IniText ini("[A]\r\nNumber=0099\r\n[B]\r\nKey=x");
    EXPECT_EQ(ini.Overwrite("A", "Number", "100"), std::nullopt);
    EXPECT_EQ(ini.Overwrite("A", "Missing", "0100"), std::nullopt);
    EXPECT_EQ(ini.Overwrite("a", "NUMBER", "0100"), "Number=0100");
    EXPECT_EQ(ini.Value("A", "Number"), "0100");
    EXPECT_EQ(ini.Content(), "[A]\r\nNumber=0100\r\n[B]\r\nKey=x");
    EXPECT_EQ(IniText("[A]\nNumber = 9\n").Overwrite("A", "Number", "8"), std::nullopt);
}

TEST(ServerText, IsReadByItsOwnRules) {
    const Text text =
        "[Empty]\r\n[General]\r\nKey=a=b\r\nLongKey=no\r\nBlank =x\r\nQuoted=\"q\"\r\n[End]\r\nLast=1";
    EXPECT_EQ(ReadIniFromText(text, "general", "key", ""), "a");
    EXPECT_EQ(ReadIniFromText(text, "General", "Blank", "none"), "none");
    EXPECT_EQ(ReadIniFromText(text, "General", "Quoted", ""), "\"q\"");
    EXPECT_EQ(ReadIniFromText(text, "End", "Last", ""), "1");
    EXPECT_EQ(ReadIniFromText(text, "Empty", "Key", "none"), "none") << "an empty section must not leak";
    EXPECT_EQ(ReadIniFromText("[General]\nKey=1\n", "General", "Key", "none"), "none");
    EXPECT_EQ(ListIniKeysFromText("[A]\r\nx=1\r\n\r\n;y=2\r\nz =3\r\n[B]\r\n", "A"), Text("x\0z\0\0", 5));
    EXPECT_EQ(ListIniKeysFromText(text, "Missing"), "");
}

}  // namespace
}  // namespace nordkeep
