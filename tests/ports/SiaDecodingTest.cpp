#include "ports/SiaData.h"
#include "ports/SiaDecoding.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

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

std::vector<Text> DecodedFacts(const SiaMessage& message, const SiaSettings& settings = {}) {
    std::vector<Text> facts;
    for (const DecodedEvent& event : DecodeSIABlock(message, settings, kNow))
        facts.push_back(Facts(event, kNow));
    return facts;
}

SiaMessage Brackets(const Text& text) {
    return {.text = text, .form = SiaForm::Brackets, .eventTime = kNow};
}

/// One block of the length form, with a check byte that is wrong on purpose.
Text Block(char type, const Text& data) {
    return static_cast<char>(data.size()) + (type + data) + "!";
}
SiaMessage Lengths(const Text& text) {
    return {.text = text, .form = SiaForm::Lengths, .eventTime = kNow};
}

TEST(SiaDecoding, ReportsBlocksItDoesNotKnow) {
    const SiaSettings settings{.SIADecodeErrorType = 77};
    const auto error = [](const Text& raw, const Text& block) {
        return "label=Nordkeep; type=77; number=8; raw=" + raw + block + "; error=Invalid SIA block type!";
    };
    struct Case {
        const char* name;
        SiaMessage message;
        std::vector<Text> facts;
    };
    const Text ba1 = "label=2211; code=BA1; object=000012; number=8; raw=";
    for (const Case& c : std::vector<Case>{
             {"nothing", Brackets(""), {}},
             {"an account alone", Brackets("[#12]"), {}},
             {"empty blocks", Brackets("[#12|]|\\]|"), {}},
             {"unknown type, first of all",
              Brackets("[#12|NBA1\\ZBA2\\NFA3]"),
              {error("[2]#12[3]NBA1[3]ZBA2", "; block=Z"), ba1 + "[2]#12[3]NBA1[3]ZBA2[3]NFA3; block=N",
               "label=2211; code=FA3; object=000012; number=8; raw=[2]#12[3]NBA1[3]ZBA2[3]NFA3; block=N"}},
             {"length without a type", Lengths("\x05"), {error("[0]\\x00", "")}},
             {"cut short", Lengths("\x09NBA1"), {"label=2211; code=BA1; number=8; raw=[3]NBA1; block=N"}},
         }) {
        EXPECT_EQ(DecodedFacts(c.message, settings), c.facts) << c.name;
    }
}

TEST(SiaDecoding, JoinsTextsToTheirEventsWhenTold) {
    const SiaSettings merging{.SIAAsciiBlockAsSeparateEvent = false};
    struct Case {
        const char* name;
        SiaMessage message;
        SiaSettings settings;
        std::vector<Text> facts;
    };
    const Text ofHall = "raw=[4]#1234[4]NBA01::[4]AHall; block=";
    for (const Case& c : std::vector<Case>{
             {"separate",
              Brackets("[#1234|NBA01\\AHall]"),
              {},
              {"label=2211; code=BA01; object=001234; number=8; " + ofHall + "N",
               "label=2211; text=Hall; object=001234; number=8; " + ofHall + "A"}},
             {"merged",
              Brackets("[#1234|NBA01\\AHall]"),
              merging,
              {"label=2211; code=BA01; text=Hall; object=001234; number=8; " + ofHall + "N"}},
             {"two texts, the account said twice",
              Brackets("[#1|NBA01\\Aa][#1|Ab]"),
              merging,
              {"label=2211; code=BA01; text=a b; object=000001; number=8; "
               "raw=[1]#1[4]NBA01::[1]Aa[1]#1::[1]Ab; block=N"}},
             {"text of another account",
              Brackets("[#1|NBA01][#2|Ab]"),
              merging,
              {"label=2211; code=BA01; object=000001; number=8; raw=[1]#1[4]NBA01[1]#2::[1]Ab; block=N"}},
             {"a text alone", Lengths(Block('#', "1") + Block('A', "x")), merging, {}},
             {"DOS letters",
              Brackets("[#1234567|AF\x99nster]"),
              {},
              {"label=2211; text=F\\xD6nster; object=1234567; number=8; raw=[7]#1234567[7]AF\\x99nster; "
               "block=A"}},
             {"blocks of lengths",
              Lengths(Block('#', "12") + "\\" + Block('N', "ri1BA01") + Block('A', "Hall")),
              merging,
              {"label=2211; code=BA01; text=Hall; object=000012; number=8; modifiers=ri1; "
               "raw=[2]#12\\[7]Nri1BA01::[4]AHall; block=N"}},
             {"the last check may be missing",
              Lengths("\x02#12!\x03NBA1"),
              {},
              {"label=2211; code=BA1; object=000012; number=8; raw=[2]#12[3]NBA1; block=N"}},
         }) {
        EXPECT_EQ(DecodedFacts(c.message, c.settings), c.facts) << c.name;
    }
}

TEST(SiaDecoding, KeepsWhatAHostileMessageCostsInBounds) {
    Text codes = "[#1|N";
    for (int i = 0; i < 5000; ++i) codes += "BA/";
    Text blocks = "[#1";
    for (int i = 0; i < 5000; ++i) blocks += "|ZZ";
    for (const Text& text : {codes, blocks, "[#1|N" + Text(1 << 20, 'B')}) {
        for (const SiaForm form : {SiaForm::Brackets, SiaForm::Lengths}) {
            const auto events = DecodeSIABlock({.text = text, .form = form}, {}, kNow);
            EXPECT_GE(events.size(), 1u);
            EXPECT_LE(events.size(), 2 * kMostSiaEvents);
            EXPECT_LE(events.front().event.RawAlarmCode.size(), 100'000u);
        }
    }
}

}  // namespace
}  // namespace nordkeep
