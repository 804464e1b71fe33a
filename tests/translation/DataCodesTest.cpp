#include "tests/doubles/TempFolder.h"
#include "translation/DataCodes.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class DataCodes : public ::testing::Test {
 protected:
    DataCodes() {
        set.m_FileName = "A";
        folder.Write("Settings\\a.datacode",
                     "[Event]\r\nBA=Burglary; br ; 10 \r\nE1=\r\nE2=Only a name\r\n"
                     "[Environmental]\r\nBA=Cold\r\n[Modifiers]\r\nti=at \r\nri=Area\r\n");
        folder.Write("Information\\SIA\\1234\\Zones.SIA",
                     "[BA]\r\n01=Front door\r\n[General]\r\n01=Hall\r\n02=Roof\r\n");
    }

    TempFolder folder{};
    Settings settings{folder.Tree()};
    cTranslate set{};
};

TEST_F(DataCodes, ExplainACodeOrLetItStandForItself) {
    struct Case {
        DataCodeSection section;
        const char* code;
        const char* result;  // name|reset|prio, none for nothing at all
    };
    const Case cases[] = {
        {DataCodeSection::Event, "", nullptr},
        {DataCodeSection::Event, "E1", nullptr},
        {DataCodeSection::Event, "ZZ", "ZZ||"},
        {DataCodeSection::Event, "E2", "Only a name||"},
        {DataCodeSection::Event, "ba", "Burglary| BR |10"},
        {DataCodeSection::Environmental, "BA", "Cold||"},
    };
    for (const Case& c : cases) {
        const auto found = FindDataCode(settings, set, c.section, c.code);
        ASSERT_EQ(found.has_value(), c.result != nullptr) << c.code;
        if (found) {
            EXPECT_EQ(found->name + "|" + found->resetOrClass + "|" + found->prio, c.result);
        }
    }
    set.m_FileName = "missing";
    EXPECT_EQ(FindDataCode(settings, set, DataCodeSection::Event, "BA")->name, "BA");
}

TEST_F(DataCodes, ReplaceTheLettersOfModifiers) {
    struct Case {
        const char* modifiers;
        const char* readable;
    };
    const Case cases[] = {{"", ""},
                          {",ri01", ""},
                          {"x", "x"},
                          {"ri", "Area"},
                          {"ri01,zz5", "Area01,zz5"},
                          {"ti12:00,,ri1", "at12:00"}};
    for (const Case& c : cases) EXPECT_EQ(ReadableModifiers(settings, set, c.modifiers), c.readable);
}

TEST_F(DataCodes, NameZonesByTypeThenInGeneral) {
    folder.Write("Information\\Zones.SIA", "[General]\r\n01=outside\r\n");
    struct Case {
        const char* idCode;
        const char* typeCode;
        const char* address;
        const char* text;
    };
    const Case cases[] = {
        {"", "BA", "01", "01"},       {"..", "BA", "01", "01"},     {"1234\\..", "BA", "01", "01"},
        {"C:", "BA", "01", "01"},     {"9999", "BA", "01", "01"},   {"1234", "BA", "77", "77"},
        {"1234", "FA", "01", "Hall"}, {"1234", "BA", "02", "Roof"}, {"1234", "BA", "01", "Front door"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ZoneText(settings, c.idCode, c.typeCode, c.address), c.text)
            << c.idCode << " " << c.typeCode;
    }
}

}  // namespace
}  // namespace nordkeep
