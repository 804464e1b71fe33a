#include "ports/formats/SiaData.h"
#include "ports/formats/SiaDecoding.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// "code|modifiers|zone|error" of each event of a block; the first character is the block's type.
std::vector<Text> Parsed(const Text& block, SiaForm form = SiaForm::Brackets) {
    std::vector<Text> parsed;
    for (const cSIAEvent& event : ParseSiaData({.m_BlockType = block[0]}, block.substr(1), form)) {
        Text modifiers;
        for (const Text& modifier : event.modifiers) modifiers += (modifiers.empty() ? "" : ",") + modifier;
        parsed.push_back(event.code + "|" + modifiers + "|" + event.zone + "|" + event.error);
    }
    return parsed;
}

TEST(SiaData, KeepsAnEventThatLeavesTheFormat) {
    const Text error = "Invalid SIA format!";
    struct Case {
        Text block;
        std::vector<Text> events;
    };
    for (const Case& c : std::vector<Case>{{"NBA01 HALL", {"BA01|||" + error}},
                                           {"N?", {"|||" + error}},
                                           {"NBA01\xFF", {"BA01|||" + error}},
                                           {"NBA01/9", {"BA01|||" + error}},
                                           {"N1", {"|||" + error}},
                                           {"EBA01 - HALL", {"BA01|||" + error}},
                                           {Text("NBA01\0", 6), {"BA01|||" + error}}}) {
        EXPECT_EQ(Parsed(c.block), c.events) << Shown(c.block);
    }
    EXPECT_EQ(Parsed("NBA01*HALL", SiaForm::Lengths), std::vector<Text>{"BA01|||" + error});
}

TEST(SiaData, ReadsCodesModifiersAndZoneTexts) {
    struct Case {
        Text block;
        std::vector<Text> events;
    };
    for (const Case& c :
         std::vector<Case>{{"Nti10:15/ri4/FA2", {"FA2|ti10:15,ri4||"}},
                           {"Nri1/BA001/BA2", {"BA001|ri1||", "BA2|ri1||"}},
                           {"Ori2BA02/ri3FA03", {"BA02|ri2||", "FA03|ri3||"}},
                           {"NBA1021/ri01/ti07:38", {"BA1021|ri01,ti07:38||"}},
                           {"Nri1BA01/L90", {"BA01|ri1,L90||"}},
                           {"Nri1BA01/L90/FA2", {"BA01|ri1||", "FA2|ri1,L90||"}},
                           {"NRP000*'DECKERS'NM", {"RP000||DECKERS |"}},
                           {"NRP000*'DECKERS'/RP001*''NM", {"RP000||DECKERS |", "RP001|||"}},
                           {"NTA01*21.5CE/TA02*-3,25CE", {"TA01||21.5CE |", "TA02||-3,25CE |"}},
                           {"NTA01*1234567CE", {"TA01||1234567CE |"}},
                           {"NBA01*HALL*", {"BA01||HALL |"}},
                           {"NBA01*it's*B", {"BA01||it's B |"}},
                           {"Nri1/BA^Kitchen_Window", {"BA|ri1|Kitchen_Window |"}},
                           {"NRP000^DECKERS^NM", {"RP000||DECKERS |"}},
                           {"NBA01^Hall^NM/BA02", {"BA01||Hall |", "BA02|||"}},
                           {"N^Hall^BA", {"BA||Hall |"}},
                           {"NBA01^Hall^/FA02^Attic^^", {"BA01||Hall |", "FA02||Attic  |"}},
                           {"NBA01 - HALL/FA02", {"BA01||HALL |", "FA02|||"}},
                           {"X12/BA01", {"BA01|12||"}},
                           {"Nid001HA048", {"HA048|id001||"}},
                           {"N", {"|||"}},
                           {"0", {}},
                           {"0BA01", {"BA01|||"}}}) {
        EXPECT_EQ(Parsed(c.block), c.events) << Shown(c.block);
    }
}

}  // namespace
}  // namespace nordkeep
