#include "translation/IdCodeFile.h"
#include "translation/LastEvents.h"
#include "translation/TypeCodeFile.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// "ID, priority, type, group and zone|padding|zero trim|key of each object".
Text Describe(const IdCodeFile& file) {
    const TelegramFormat& f = file.format;
    Text text;
    for (const auto& [start, length] : {std::pair(f.m_IdCode_Format_StartPos, f.m_IdCode_Format_Length),
                                        std::pair(f.m_Prio_Format_StartPos, f.m_Prio_Format_Length),
                                        std::pair(f.m_TypeCode_Format_StartPos, f.m_TypeCode_Format_Length),
                                        std::pair(f.m_Group_Format_StartPos, f.m_Group_Format_Length),
                                        std::pair(f.m_Zone_Format_StartPos, f.m_Zone_Format_Length)}) {
        text += std::to_string(start) + "+" + std::to_string(length) + " ";
    }
    text += "|" + std::to_string(f.m_Padding_Count) + "x" + std::to_string(f.m_Padding_Character);
    text += "|" + (file.zeroTrim ? std::to_string(*file.zeroTrim) : Text("-"));
    for (const IdCodeRow& row : file.rows) text += "|" + row.key;
    return text;
}

TEST(IdCodeFile, TakesADirectiveOnceAndEverythingElseAsAnObject) {
    struct Case {
        const char* content;
        const char* description;
    };
    const Case cases[] = {
        {"", "1+0 1+0 1+0 0+0 0+0 |0x0|-"},
        {"FORMAT =1,4\n;x\n \n ; y", "1+0 1+0 1+0 0+0 0+0 |0x0|-|FORMAT =1,4"},
        {"FORMAT=", "1+0 1+0 1+0 1+0 0+0 |0x0|-"},
        {"FORMAT=1,4,0,0,5,3", "1+4 1+0 5+3 1+0 0+0 |0x0|-"},
        {"FORMAT=1,4,0,0,5,3,0,0,7,-2", "1+4 1+0 5+3 1+0 7+-2 |0x0|-"},
        {"FORMAT=x, 4 b,-3,-9,99999,3.9", "1+4 1+0 32767+3 1+0 0+0 |0x0|-"},
        {"1;a\r\n  format=2,2\r\nFormat=9,9;b", "2+2 1+0 1+0 1+0 0+0 |0x0|-|1|FORMAT=9,9"},
        {"PADDING=8,300", "1+0 1+0 1+0 0+0 0+0 |0x0|-"},
        {"PADDING=0,48\rPADDING=6,48", "1+0 1+0 1+0 0+0 0+0 |0x0|-|PADDING=6,48"},
        {"padding=8,48", "1+0 1+0 1+0 0+0 0+0 |8x48|-"},
        {"ZEROTRIM=", "1+0 1+0 1+0 0+0 0+0 |0x0|0"},
        {"ZeroTrim=-1\nZEROTRIM=0", "1+0 1+0 1+0 0+0 0+0 |0x0|-1|ZEROTRIM=0"},
    };
    for (const Case& c : cases) EXPECT_EQ(Describe(ReadIdCodeFile(c.content)), c.description) << c.content;
}

TEST(IdCodeFile, ReadsTheFieldsOfAnObject) {
    struct Case {
        const char* row;
        const char*
            description;  // ID code|caller, then A for accepting only the caller, F for fed by the caller
    };
    const Case cases[] = {
        {" 12 3 ;x", "12 3|A"},
        {"ab\xE5/070;;;;;;;;", "AB\xC5|070A"},
        {"123/456/789;;;;;;;0;1", "123|456F"},
        {"12 /07;;;;;;; 1 ; 1 ", "12 |07AF"},
        {"/07;;;;;;;-1;yes", "|07"},
    };
    for (const Case& c : cases) {
        const IdCodeRow row = ReadIdCodeFile(c.row).rows.at(0);
        EXPECT_EQ(row.IdCode() + "|" + row.Caller() + (row.matchCallerToAccept ? "A" : "") +
                      (row.matchCallerForAliveTest ? "F" : ""),
                  c.description);
    }
    const IdCodeFile file =
        ReadIdCodeFile("1; Shop ; 60 ; Plan/1/2 ; C ; P ; Cust ;1;0; 99 ; 08:00:00 ; more");
    Text fields;
    const IdCodeRow& r = file.rows.at(0);
    for (const TextView field : {r.objectName, r.schedule, r.mapName, r.exportAlarmCode, r.exportProtocol,
                                 r.customer, r.resetIdCode, r.schedule2}) {
        fields.append(field).append("|");
    }
    EXPECT_EQ(fields, " Shop |60| Plan/1/2 |C|P|Cust|99|08:00:00|");
}

TEST(TypeCodeFile, ReadsEveryRow) {
    Text rows;
    for (const cTypeCode& type : ReadTypeCodeFile(";x\r\n AB ; 7x ; Fire ; AC ; more\nab\rAB;-1;Second")) {
        rows += type.m_TypeCode + "," + std::to_string(type.m_Prio) + "," + type.m_Name + "," +
                type.m_ResetTypeCode + "|";
    }
    EXPECT_EQ(rows, "AB,7,Fire,AC|ab,0,,|AB,-1,Second,|");
}

TEST(LastEvents, KeepTheirFormat) {
    cTranslate set;
    for (const char* code : {"SILENT", "HEARD", "SERVED", "TESTED"}) {
        set.m_IdCodes.push_back(std::make_unique<cIDCode>());
        set.m_IdCodes.back()->m_IdCode = code;
    }
    cIDCode& served = *set.m_IdCodes[2];
    served.m_ServiceMode = 2;
    served.m_ServicePeriodEnd = OleDate::FromCivil({2026, 12, 24, 15, 0, 0});
    served.SetNextAliveTestExpirationTime(2, OleDate::FromCivil({2026, 3, 11, 0, 0, 1}));
    set.m_IdCodes[1]->m_LastIncomingEvent = OleDate::FromCivil({2026, 3, 10, 9, 8, 7});
    set.m_IdCodes[1]->m_AliveTest2IntervalHasExceeded = true;
    set.m_IdCodes[3]->m_AliveTest2IntervalOrTimeStamps = "60";
    EXPECT_EQ(WriteLastEvents(set),
              "HEARD;20260310090807;18991230000000;0;0;18991230000000;18991230000000;18991230000000;-1\r\n"
              "SERVED;18991230000000;18991230000000;0;2;18991230000000;20261224150000;20260311000001;0\r\n"
              "TESTED;18991230000000;18991230000000;0;0;18991230000000;18991230000000;18991230000000;0\r\n");
    const auto lines = ReadLastEvents("A;2026;99999999999999;1;x;20261399000000;-;\n\nB\n;;;;;;;;;;;;");
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[0].hasFailed && !lines[0].hasFailed2 && lines[0].serviceMode == 0);
    EXPECT_TRUE(lines[2].lastIncomingEvent.IsNever());
}

}  // namespace
}  // namespace nordkeep
