#include "tests/doubles/TempFolder.h"
#include "translation/DataCodes.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class DataCodes : public ::testing::Test {
 protected:
    DataCodes() { set.m_FileName = "A"; }

    TempFolder folder{};
    Settings settings{folder.Tree()};
    cTranslate set{};
};

TEST_F(DataCodes, ExplainCodesAndModifiersOrLetThemStandForThemselves) {
    folder.Write("Settings\\a.datacode",
                 "[Event]\nBA=Burglary; br ; 10 \nE1=\nE2=Only a name\n"
                 "[Environmental]\nBA=Cold\n[Modifiers]\nti=at \nri=Area\n");
    const auto explain = [this](DataCodeSection section, TextView code) {
        const auto found = FindDataCode(settings, set, section, code);
        return found ? found->name + "|" + found->resetOrClass + "|" + found->prio : Text("nothing");
    };
    EXPECT_EQ(explain(DataCodeSection::Event, ""), "nothing");
    EXPECT_EQ(explain(DataCodeSection::Event, "E1"), "nothing");
    EXPECT_EQ(explain(DataCodeSection::Event, "ZZ"), "ZZ||");
    EXPECT_EQ(explain(DataCodeSection::Event, "E2"), "Only a name||");
    EXPECT_EQ(explain(DataCodeSection::Event, "ba"), "Burglary| BR |10");
    EXPECT_EQ(explain(DataCodeSection::Environmental, "BA"), "Cold||");
    EXPECT_EQ(ReadableModifiers(settings, set, ",ri01"), "");
    EXPECT_EQ(ReadableModifiers(settings, set, "x"), "x");
    EXPECT_EQ(ReadableModifiers(settings, set, "ri01,zz5"), "Area01,zz5");
    EXPECT_EQ(ReadableModifiers(settings, set, "ti12:00,,ri1"), "at12:00");
}

TEST_F(DataCodes, NameZonesByTypeThenInGeneral) {
    folder.Write("Information\\SIA\\1234\\Zones.SIA", "[BA]\n01=Front door\n[General]\n01=Hall\n02=Roof\n");
    for (const char* outside :
         {"Information\\Zones.SIA", "Information\\SIA\\Zones.SIA", "Information\\SIA\\C:\\Zones.SIA"}) {
        folder.Write(outside, "[General]\n01=outside\n");
    }
    for (const char* idCode : {"", ".", "..", "1234\\..", "1234/..", "C:", "9999"}) {
        EXPECT_EQ(ZoneText(settings, idCode, "BA", "01"), "01") << idCode;
    }
    EXPECT_EQ(ZoneText(settings, "1234", "BA", "77"), "77");
    EXPECT_EQ(ZoneText(settings, "1234", "FA", "01"), "Hall");
    EXPECT_EQ(ZoneText(settings, "1234", "BA", "02"), "Roof");
    EXPECT_EQ(ZoneText(settings, "1234", "BA", "01"), "Front door");
}

}  // namespace
}  // namespace nordkeep
