#include "ports/Rsm02.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

#include <memory>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});
const Text kHello = "\x02NKGATEWAY\x03";
const Text kTimeRequest = "\x05";
const Text kTimeFrame = FromHex("02 00 00 0C 49 19 0B 15 06 05 04 00 9F 03");
const Text kWorked = FromHex(
    "02 00 00 2A 50 18 05 11 0D 2D 03 35 30 00 31 32 33 34 31 38 31 31 33 31 30 31 30 31 35 5B 42 30 37 30 "
    "31 32 33 34 "
    "35 36 37 06 DA 03");

constexpr char kFirst = 0x20;
constexpr char kLast = 0x10;
constexpr char kSingle = 0x30;

struct Fields {
    char bits = kSingle;
    char kind = 'P';
    char line = 3;
};

/// A frame with a right length, sum and end.
Text Frame(char classCode, const Text& text, const Fields& fields = {}) {
    const Text time = "\x18\x05\x11\x0D\x2D";
    Text inner(2, '\0');
    inner += static_cast<char>(15 + text.size());
    inner += fields.kind + time + fields.line + classCode + fields.bits + Text(1, '\0') + text;
    unsigned sum = 0;
    for (const char c : inner) sum += static_cast<unsigned char>(c);
    return "\x02" + inner + static_cast<char>(sum / 256) + static_cast<char>(sum % 256) + "\x03";
}

Rsm02Settings Defaults() {
    return {.PortName = "PortR", .PortDescription = "Receiver", .hiddenNumber = "hidden"};
}

NewDecoder Fresh(const Rsm02Settings& settings = Defaults(), const CallerLookup& findCaller = {}) {
    return [=]() -> Decoder {
        const auto state = std::make_shared<Rsm02State>();
        return [=](TextView received, OleDate now) {
            return NextRsm02Step(received, {settings, *state, findCaller}, now);
        };
    };
}

std::vector<Text> FactsOf(const Text& stream, const Rsm02Settings& settings = Defaults()) {
    return Decode(Fresh(settings)(), {stream}, kNow).facts;
}

TEST(Rsm02, RefusesWhatIsNoFrameAndRecovers) {
    Text wrongSum = kWorked;
    wrongSum[42] ^= 1;
    Text wrongEnd = kWorked;
    wrongEnd.back() = 'x';
    Text tooShort = kWorked;
    tooShort[3] = 13;
    struct Case {
        const char* name;
        Text stream;
        std::size_t events;
        Text replies;
        std::size_t rest;
        int note;
        Text noteTail;
        int traffic;
    };
    for (const Case& c : {
             Case{"wrong sum", wrongSum + kWorked, 1, "\x15\x06", 0, 1166, " - Receiver", 1},
             Case{"wrong end", wrongEnd + kWorked, 1, "\x15\x06", 0, 1167, " - Receiver", 1},
             Case{"too short throws all away", tooShort + kWorked, 0, "", 0, 1164,
                  "(MessageLength < 14) - Receiver", 0},
             Case{"no text", Frame('5', ""), 0, "\x06", 0, 1165, " - Receiver", 0},
             Case{"another kind", Frame('5', "12", {.kind = 'Q'}), 0, "\x06", 0, 0, "", 0},
             Case{"unknown class", Frame('?', "12"), 0, "\x06", 0, 0, "", 1},
             Case{"sixteen bytes", kWorked.substr(0, 16), 0, "", 16, 0, "", 0},
             Case{"one byte missing", kWorked.substr(0, 43), 0, "", 43, 0, "", 0},
             Case{"noise and line test", Text("\0\xFFz\x07\x03", 5) + kWorked, 1, "\x06\x06", 0, 0, "", 2},
             Case{"request for the time", kTimeRequest, 0, kTimeFrame, 0, 0, "", 1},
             Case{"hello", kHello + kWorked, 1, "\x06", 0, 1160, "PortR Receiver", 1},
         }) {
        const Decoded decoded = Decode(Fresh()(), {c.stream}, kNow);
        EXPECT_EQ(decoded.events.size(), c.events) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
        EXPECT_EQ(decoded.trafficNotes, c.traffic) << c.name;
        ASSERT_EQ(decoded.notes.size(), c.note == 0 ? 0u : 1u) << c.name;
        if (c.note == 0) continue;
        EXPECT_EQ(decoded.notes[0].text, c.note) << c.name;
        EXPECT_EQ(decoded.notes[0].tail, c.noteTail) << c.name;
    }
    EXPECT_EQ(Decode(Fresh()(), {kTimeRequest}, OleDate::FromCivil({2100, 1, 1})).replies, "");
}

TEST(Rsm02, ReadsTheFieldsOfAFrame) {
    Rsm02Settings withTime = Defaults();
    withTime.TimeStampFromRBM = true;
    const Text worked =
        "label=2204; code=123418113101015; caller=0701234567; number=12; line=3; "
        "raw=123418113101015[B0701234567";
    EXPECT_EQ(FactsOf(kWorked), std::vector<Text>{worked});
    EXPECT_EQ(FactsOf(kWorked, withTime), std::vector<Text>{"time=2024-05-17 13:45:00; " + worked});
    struct Case {
        const char* name;
        Text frame;
        Text facts;
    };
    for (const Case& c : {
             Case{"own", Frame('0', "12"), "label=Nordkeep; code=12; number=0; line=3; raw=12"},
             Case{"either case", Frame('s', "12"), "label=2230; code=12; number=36; line=3; raw=12"},
             Case{"a label of two texts", Frame('p', "12"),
                  "label=2204 2236; code=12; number=12; line=3; raw=12"},
             Case{"speech, line above 127", Frame('1', "12", {.bits = kSingle | 1, .line = '\xC8'}),
                  "label=2200; code=12; number=1; line=200; speech=yes; raw=12"},
             Case{"hidden number", Frame('1', "12[Dxyz"),
                  "label=2200; code=12; caller=hidden; number=1; line=3; raw=12[Dxyz"},
             Case{"the first mark counts, in either case", Frame('1', "12[x[b070[A"),
                  "label=2200; code=12[x; caller=070[A; number=1; line=3; raw=12[x[b070[A"},
             Case{"no code", Frame('1', "B9999900[A"),
                  "label=2200; caller=hidden; number=1; line=3; raw=B9999900[A"},
             Case{"blank only when it is all", Frame('1', "B99999001"),
                  "label=2200; code=B99999001; number=1; line=3; raw=B99999001"},
             Case{"system telegram", Frame('1', "A9999994"),
                  "label=2200; code=A9999994; text=Receiver (3); number=1; line=3; raw=A9999994"},
             Case{"control bytes",
                  Frame('1', Text("1\x02\x03\0\x1F\xFF"
                                  "2",
                                  7)),
                  "label=2200; code=1\\x02\\x03\\x00\\x1F2; number=1; line=3; raw=1\\x1F2"},
         }) {
        EXPECT_EQ(FactsOf(c.frame), std::vector<Text>{c.facts}) << c.name;
    }
}

TEST(Rsm02, PutsFragmentsTogether) {
    struct Case {
        const char* name;
        Text stream;
        std::vector<Text> raws;
    };
    const Text first = Frame('1', " abc ", {.bits = kFirst});
    const Text middle = Frame('2', "def", {.bits = 0});
    const Text last = Frame('3', "ghi", {.bits = kLast});
    for (const Case& c :
         std::vector<Case>{{"three", first + middle + last, {"abcdefghi"}},
                           {"a new first one", first + first + last, {"abcghi"}},
                           {"without a first one", first + last + last, {"abcghi", "abcghighi"}}}) {
        const Decoded decoded = Decode(Fresh()(), {c.stream}, kNow);
        ASSERT_EQ(decoded.events.size(), c.raws.size()) << c.name;
        for (std::size_t i = 0; i < c.raws.size(); ++i)
            EXPECT_EQ(decoded.events[i].RawAlarmCode, c.raws[i]) << c.name;
        EXPECT_EQ(decoded.events.back().TranslationNumberToUse, 4) << "the last frame's class counts";
    }
    Rsm02State state;
    const Rsm02Settings settings = Defaults();
    for (int i = 0; i < 1000; ++i)
        NextRsm02Step(Frame('1', Text(240, 'x'), {.bits = 0}), {settings, state, {}}, kNow);
    EXPECT_EQ(state.accumulated.size(), 131072u) << "endless fragments are bounded";
}

TEST(Rsm02, ReadsTextMessages) {
    Rsm02Settings noCode = Defaults();
    noCode.ParseNumericIDCodeFieldUsingSpace = false;
    struct Case {
        Text text;
        Rsm02Settings settings;
        Text facts;
    };
    for (const Case& c : {
             Case{"12 a\r\nb\rc\nd[B070", Defaults(),
                  "label=2237; code=12; text=a\\x09b c d; caller=070; number=17; line=3; raw=12 abcd[B070"},
             Case{"12", Defaults(), "label=2237; text=12; number=17; line=3; raw=12"},
             Case{"1x 2", Defaults(), "label=2237; text=1x 2; number=17; line=3; raw=1x 2"},
             Case{"12 a", noCode, "label=2237; text=12 a; number=17; line=3; raw=12 a"},
             Case{"[B070", Defaults(), "label=2237; caller=070; number=17; line=3; raw=[B070"},
         }) {
        EXPECT_EQ(FactsOf(Frame('x', c.text), c.settings), std::vector<Text>{c.facts}) << Shown(c.text);
    }
}

TEST(Rsm02, DecodesBlocks) {
    Rsm02Settings settings = Defaults();
    settings.sia.SIAAsciiBlockAsSeparateEvent = false;
    const Text blocks = Text("\x04") + "#1234!" + "\x07" + "Nri1BA01!";
    EXPECT_EQ(FactsOf(Frame('C', blocks + "[B070"), settings),
              std::vector<Text>{
                  "label=2211; code=BA01; caller=070; object=001234; number=8; line=3; modifiers=ri1; "
                  "raw=[4]#1234[7]Nri1BA01; block=N"});
    EXPECT_EQ(FactsOf(Frame('C',
                            "\x04#1234!\x01"
                            "Ax!"),
                      settings),
              std::vector<Text>{});
    EXPECT_EQ(FactsOf(Frame('C', "[B070"), settings),
              std::vector<Text>{"label=2211; caller=070; number=8; line=3; raw=[B070"})
        << "without blocks it is an ordinary event";
}

TEST(Rsm02, TurnsACallIntoASignOfLife) {
    cTranslate set;
    cIDCode object;
    object.m_IdCode = "7001";
    int number = 1;
    const CallerLookup findCaller = [&](TextView caller) -> std::optional<CallerMatch> {
        if (caller != "070") return std::nullopt;
        return CallerMatch{&set, &object, number};
    };
    Rsm02Settings settings = Defaults();
    settings.calls.CLIdTranslatedSIAAliveTestType = "08";
    settings.calls.CLIdTranslatedContactIDAliveTestType = "9";
    Rsm02Settings parsing = settings;
    parsing.calls.ParseCLIDasProtocol = true;
    struct Case {
        const char* name;
        Rsm02Settings settings;
        int translationNumber;
        char classCode;
        const char* text;
        Text facts;
    };
    for (const Case& c : {
             Case{"other", settings, 1, '1', "B9999900[B070",
                  "label=Nordkeep; type=99; code=700199; caller=070; object=7001; number=1; set=given; "
                  "line=3; forced=99"},
             Case{"SIA", settings, 8, '1', "[B070",
                  "label=Nordkeep; type=8; code=#700108; caller=070; object=7001; number=8; set=given; "
                  "line=3; forced=08"},
             Case{"Contact ID", settings, 12, '1', "[B070",
                  "label=Nordkeep; type=9; code=70019; caller=070; object=7001; number=12; set=given; "
                  "line=3; forced=9"},
             Case{"unknown caller", settings, 1, '1', "[B071", "label=2200; caller=071; number=1; line=3"},
             Case{"hidden caller", settings, 1, '1', "[A", "label=2200; caller=hidden; number=1; line=3"},
             Case{"with a code it is no call", settings, 1, '1', "5[B070",
                  "label=2200; code=5; caller=070; number=1; line=3"},
             Case{"nor as a text message", settings, 1, 'x', "[B070",
                  "label=2237; caller=070; number=17; line=3"},
             Case{"parsed", parsing, 1, '1', "[B070",
                  "label=2214; type=99; code=070; caller=070; number=23; line=3"},
         }) {
        number = c.translationNumber;
        const Decoded decoded = Decode(Fresh(c.settings, findCaller)(), {Frame(c.classCode, c.text)}, kNow);
        EXPECT_EQ(decoded.facts, std::vector<Text>{c.facts + "; raw=" + c.text}) << c.name;
    }
}

TEST(Rsm02, GivesTheSameHoweverTheStreamIsCut) {
    const std::vector<Text> streams = {kWorked,
                                       kTimeRequest,
                                       kHello,
                                       "\x07",
                                       Frame('1',
                                             "\x02\x03\x05\x07"
                                             "1"),
                                       Frame('1', "ab", {.bits = kFirst}) + Frame('1', "c", {.bits = kLast}),
                                       Frame('C', Text("\x04") + "#1234!" + "\x07" + "Nri1BA01!")};
    Text all = "xx";
    for (const Text& stream : streams) all += stream;
    ExpectSameHoweverCut(Fresh(), all, kNow);
    ExpectPairsAsOneByOne(Fresh(), streams, kNow);
    ExpectWithstands(Fresh(), streams);
}

}  // namespace
}  // namespace nordkeep
