#include "ports/MultiCom.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

/// A document with this event code, what else it holds, and the additional information behind it.
Text Document(const Text& eventCode, const Text& more, const Text& addInfo) {
    return "<AlarmRequest><TransmCode>4711</TransmCode><EventCode>" + eventCode + "</EventCode>" + more +
           "</AlarmRequest><AddInfo>" + addInfo + "</AddInfo>";
}

std::vector<Text> FactsOf(const Text& document, const MultiComSettings& settings = {}) {
    const MultiComTelegram telegram{.text = document,
                                    .document = document,
                                    .common = {.AlarmTime = kNow, .Originator = "070", .LineCardNumber = "3"},
                                    .now = kNow};
    std::vector<Text> facts;
    for (const DecodedEvent& event : DecodeMultiCom(telegram, settings, {}))
        facts.push_back(Facts(event, kNow));
    return facts;
}

TEST(MultiCom, ChoosesByTheEventCode) {
    const Text area = "<EventText>Brand</EventText><TransmArea>1</TransmArea><AlarmType>5</AlarmType>";
    struct Case {
        const char* name;
        Text document;
        int behaviour;
        Text before;  // what stands in front of the document in the facts
        Text behind;
    };
    const Text contactId = Document("831", "", "18113101015.");
    const Text robofon = Document("833", "", "12340001");
    const Text other = Document("130", area, "see https://x.y/z|more");
    const Text otherBad = Document("99999", "", "");
    const Text areaAlarm = Document("065", area, "");
    for (const Case& c : {
             Case{"Contact ID", contactId, 0,
                  "label=2234; code=4711/18113101015; text=18113101015; caller=070; number=12; line=3; raw=",
                  ""},
             Case{"Robofon", robofon, 0,
                  "label=2235; text=12340001; caller=4711; number=1; line=3; raw=", ""},
             Case{"others, with a link", other, 0,
                  "label=2235 2238; type=130; code=4711; text=Brand; caller=070; number=40; line=3; xml=" +
                      other + "; raw=",
                  "; url=https://x.y/z"},
             Case{"type beyond 16 bits", otherBad, 0,
                  "label=2235; code=4711; caller=070; number=40; line=3; xml=" + otherBad + "; raw=", ""},
             Case{"no document at all", "<x>", 0,
                  "label=2235; type=0; caller=070; number=40; line=3; xml=<x>; raw=", ""},
             Case{"area alarm", areaAlarm, 1,
                  "label=2232; type=5; code=4711; text=Brand; caller=070; number=40; line=3; xml=" +
                      areaAlarm + "; raw=",
                  ""},
         }) {
        EXPECT_EQ(FactsOf(c.document, {.MultiComBehaviour = c.behaviour}),
                  std::vector<Text>{c.before + c.document + c.behind})
            << c.name;
    }
    for (const Text& none :
         {Document("65", area, ""), Document("831", area, "1."), Document("001", "", "")}) {
        EXPECT_EQ(FactsOf(none, {.MultiComBehaviour = 1}), std::vector<Text>{}) << none;
    }
}

TEST(MultiCom, DecodesTheBlocksOfASiaDocument) {
    // Length, type, data and check in hexadecimal digits: Nri1BA01 and AHall.
    const Text blocks = "074E7269314241303100#044148616C6C00.";
    const Text raw = "raw=[4]#4711[7]Nri1BA01::[4]AHall; block=";
    EXPECT_EQ(
        FactsOf(Document("832", "", blocks)),
        (std::vector<Text>{
            "label=2211; code=BA01; caller=070; object=004711; number=8; line=3; modifiers=ri1; " + raw + "N",
            "label=2211; text=Hall; caller=070; object=004711; number=8; line=3; " + raw + "A"}));
    for (const char* nothing : {"", ".", "#.", "0#0.", "zz#zz.", "07#."}) {
        EXPECT_EQ(FactsOf(Document("832", "", nothing)), std::vector<Text>{}) << nothing;
    }
}

}  // namespace
}  // namespace nordkeep
