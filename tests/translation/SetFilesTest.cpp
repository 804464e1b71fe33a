#include "runtime/Dates.h"
#include "translation/IdCodeFile.h"
#include "translation/LastEvents.h"
#include "translation/TypeCodeFile.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>

namespace nordkeep {
namespace {

using Ten = std::array<int, 10>;

Ten FormatNumbers(const TelegramFormat& f) {
    return {f.m_IdCode_Format_StartPos, f.m_IdCode_Format_Length,     f.m_Prio_Format_StartPos,
            f.m_Prio_Format_Length,     f.m_TypeCode_Format_StartPos, f.m_TypeCode_Format_Length,
            f.m_Group_Format_StartPos,  f.m_Group_Format_Length,      f.m_Zone_Format_StartPos,
            f.m_Zone_Format_Length};
}

TEST(IdCodeFile, ReadsFormats) {
    struct Case {
        const char* content;
        Ten numbers;
        std::size_t objects;
    };
    const Case cases[] = {
        {"", {1, 0, 1, 0, 1, 0, 0, 0, 0, 0}, 0},
        {"FORMAT =1,4", {1, 0, 1, 0, 1, 0, 0, 0, 0, 0}, 1},
        {"FORMAT=", {1, 0, 1, 0, 1, 0, 1, 0, 0, 0}, 0},
        {"FORMAT=1,4,0,0,5,3", {1, 4, 1, 0, 5, 3, 1, 0, 0, 0}, 0},
        {"FORMAT=1,4,0,0,5,3,0,0,7,-2", {1, 4, 1, 0, 5, 3, 1, 0, 7, -2}, 0},
        {"FORMAT=1,4,0,0,5,3,0,0,-7,2", {1, 4, 1, 0, 5, 3, 1, 0, -7, 2}, 0},
        {"FORMAT=x, 4 b,-3,-9,99999,3.9", {1, 4, 1, 0, 32767, 3, 1, 0, 0, 0}, 0},
        {"1;a\r\n  format=2,2\r\nFORMAT=9,9", {2, 2, 1, 0, 1, 0, 1, 0, 0, 0}, 2},
    };
    for (const Case& c : cases) {
        const IdCodeFile file = ReadIdCodeFile(c.content);
        EXPECT_EQ(FormatNumbers(file.format), c.numbers) << c.content;
        EXPECT_EQ(file.rows.size(), c.objects) << c.content;
    }
}

TEST(IdCodeFile, ReadsPaddingAndZeroTrimOnce) {
    struct Case {
        const char* content;
        int count;
        int character;
        std::optional<int> zeroTrim;
        const char* firstObject;
    };
    const Case cases[] = {
        {"PADDING=8,300", 0, 0, {}, nullptr},
        {"PADDING=0,48", 0, 0, {}, nullptr},
        {"PADDING=8", 0, 0, {}, nullptr},
        {"padding=8,48", 8, 48, {}, nullptr},
        {"PADDING=8,0\nPADDING=6,48", 0, 0, {}, "PADDING=6,48"},
        {"ZEROTRIM=", 0, 0, 0, nullptr},
        {"ZeroTrim=-1\nZEROTRIM=0;x", 0, 0, -1, "ZEROTRIM=0"},
        {"; ZEROTRIM=1\n \n;x", 0, 0, {}, nullptr},
    };
    for (const Case& c : cases) {
        const IdCodeFile file = ReadIdCodeFile(c.content);
        EXPECT_EQ(file.format.m_Padding_Count, c.count) << c.content;
        EXPECT_EQ(file.format.m_Padding_Character, c.character) << c.content;
        EXPECT_EQ(file.zeroTrim, c.zeroTrim) << c.content;
        EXPECT_EQ(file.rows.empty() ? "" : file.rows[0].key, c.firstObject ? c.firstObject : "") << c.content;
    }
}

TEST(IdCodeFile, ReadsObjects) {
    struct Case {
        const char* row;
        const char* idCode;
        const char* caller;
        bool accepts;
        bool feeds;
    };
    const Case cases[] = {
        {"123", "123", "", true, false},
        {" 12 3 ;x", "12 3", "", true, false},
        {"ab\xE5/070", "AB\xC5", "070", true, false},
        {"123/456/789;;;;;;;0;1", "123", "456", false, true},
        {"12 /07;;;;;;; 1 ; 1 ", "12 ", "07", true, true},
        {"/07;;;;;;;-1;yes", "", "07", false, false},
    };
    for (const Case& c : cases) {
        const IdCodeFile file = ReadIdCodeFile(c.row);
        ASSERT_EQ(file.rows.size(), 1u) << c.row;
        EXPECT_EQ(file.rows[0].IdCode(), c.idCode) << c.row;
        EXPECT_EQ(file.rows[0].Caller(), c.caller) << c.row;
        EXPECT_EQ(file.rows[0].matchCallerToAccept, c.accepts) << c.row;
        EXPECT_EQ(file.rows[0].matchCallerForAliveTest, c.feeds) << c.row;
    }
    const IdCodeFile file =
        ReadIdCodeFile("1; Shop ; 60 ; Plan/1/2 ; C ; P ; Cust ;1;0; 99 ; 08:00:00 ; more");
    const IdCodeRow& row = file.rows.at(0);
    EXPECT_EQ(row.objectName, " Shop ");
    EXPECT_EQ(row.mapName, " Plan/1/2 ");
    EXPECT_EQ(
        Text(row.schedule).append("|").append(row.exportAlarmCode).append("|").append(row.exportProtocol),
        "60|C|P");
    EXPECT_EQ(Text(row.customer).append("|").append(row.resetIdCode).append("|").append(row.schedule2),
              "Cust|99|08:00:00");
}

TEST(TypeCodeFile, ReadsEveryRow) {
    const auto types = ReadTypeCodeFile(";x\r\n AB ; 7x ; Fire ; AC ; more\nab\rAB;-1;Second");
    ASSERT_EQ(types.size(), 3u);
    EXPECT_EQ(types[0].m_TypeCode + "|" + types[0].m_Name + "|" + types[0].m_ResetTypeCode, "AB|Fire|AC");
    EXPECT_EQ(types[0].m_Prio, 7);
    EXPECT_EQ(types[1].m_TypeCode + types[1].m_Name, "ab");
    EXPECT_EQ(types[2].m_Prio, -1);
}

TEST(LastEvents, WritesWhatAReaderUnderstands) {
    cTranslate set;
    for (const char* code : {"SILENT", "HEARD", "SERVED"}) {
        set.m_IdCodes.push_back(std::make_unique<cIDCode>());
        set.m_IdCodes.back()->m_IdCode = code;
    }
    cIDCode& heard = *set.m_IdCodes[1];
    heard.m_LastIncomingEvent = OleDate::FromCivil({2026, 3, 10, 9, 8, 7});
    heard.m_AliveTest2IntervalHasExceeded = true;
    cIDCode& served = *set.m_IdCodes[2];
    served.m_ServiceMode = 2;
    served.m_ServicePeriodEnd = OleDate::FromCivil({2026, 12, 24, 15, 0, 0});
    served.SetNextAliveTestExpirationTime(2, OleDate::FromCivil({2026, 3, 11, 0, 0, 1}));
    const Text golden =
        "HEARD;20260310090807;18991230000000;0;0;18991230000000;18991230000000;18991230000000;-1\r\n"
        "SERVED;18991230000000;18991230000000;0;2;18991230000000;20261224150000;20260311000001;0\r\n";
    EXPECT_EQ(WriteLastEvents(set), golden);
    const auto lines = ReadLastEvents(golden);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].lastIncomingEvent, heard.m_LastIncomingEvent);
    EXPECT_TRUE(lines[0].hasFailed2 && !lines[0].hasFailed && lines[0].expiration.IsNever());
    EXPECT_EQ(lines[1].servicePeriodEnd, served.m_ServicePeriodEnd);
    EXPECT_EQ(lines[1].expiration2, served.GetNextAliveTestExpirationTime(2));
}

TEST(LastEvents, ReadsMalformedTimesAsSomething) {
    const auto lines = ReadLastEvents("A;2026;99999999999999;1;x;20261399000000;-;\n\nB\n;;;;;;;;;;;;");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[0].hasFailed);
    EXPECT_EQ(lines[0].serviceMode, 0);
    EXPECT_TRUE(lines[2].lastIncomingEvent.IsNever());
}

TEST(SetFiles, SurviveRubbishInReasonableTime) {
    const auto start = std::chrono::steady_clock::now();
    Text endless(100'000'000, 'x');
    endless[10] = '\0';
    EXPECT_EQ(ReadIdCodeFile(endless).rows.size(), 1u);
    EXPECT_LT(ReadIdCodeFile(endless).rows[0].key.size(), 100'000u);
    EXPECT_EQ(ReadTypeCodeFile(Text(1'000'000, ';')).size(), 0u);
    Text noise(1'000'000, '\0');
    std::uint32_t seed = 1;
    for (char& c : noise) c = static_cast<char>((seed = seed * 1664525 + 1013904223) >> 24);
    EXPECT_GT(ReadIdCodeFile(noise).rows.size(), 1000u);
    EXPECT_GT(ReadTypeCodeFile(noise).size(), 1000u);
    EXPECT_GT(ReadLastEvents(noise).size(), 1000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace nordkeep
