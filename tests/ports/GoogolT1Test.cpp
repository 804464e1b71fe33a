#include "ports/Crc16.h"
#include "ports/GoogolT1.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

const Text kWorked = FromHex(
    "01 30 05 00 00 19 18 05 11 0D 2D 1E 00 00 00 21 00 31 32 33 34 20 4C 61 72 6D 20 68 61 6C 6C 30 57");

/// A frame with a right check; `data` is what follows the length byte.
Text Frame(const Text& data, char kind = '0', char sequence = 0) {
    const Text body = Text("\x01") + kind + sequence + Text(2, '\0') + static_cast<char>(data.size()) + data;
    const unsigned check = CRC16(body);
    return body + static_cast<char>(check >> 8) + static_cast<char>(check & 255);
}

/// Data with this class and status in their places.
Text Data(int classCode, char status, const Text& text) {
    return Text(9, '\0') + static_cast<char>(classCode) + status + text;
}

Decoder WithSettings(GoogolSettings settings = {}) {
    return [settings](TextView received, OleDate now) { return NextGoogolStep(received, settings, now); };
}

TEST(Crc16, HasTheKnownCheckValue) {
    EXPECT_EQ(CRC16("123456789"), 0xBB3D);
    EXPECT_EQ(CRC16(""), 0);
}

TEST(GoogolT1, RefusesWhatIsNoFrameAndRecovers) {
    Text wrong = kWorked;
    wrong.back() ^= 1;
    const Text longText = "\x02" + Text(130, 'x');
    struct Case {
        const char* name;
        Text stream;
        std::size_t events;
        Text replies;
        std::size_t rest;
        int traffic;
    };
    for (const Case& c : {
             Case{"wrong check throws all away", wrong + kWorked, 0, "", 0, 0},
             Case{"noise only", Text("\0\xFFxyz\x03\x06", 7), 0, "", 0, 0},
             Case{"line test in noise", "ab\x07" + Frame(Data(17, 0, "1")), 1, "\x06\x06", 0, 2},
             Case{"kind without an event", Frame(Data(17, 0, "1"), '1'), 0, "\x06", 0, 1},
             Case{"seven bytes", Text("\x01\x30\0\0\0\0\0", 7), 0, "", 7, 0},
             Case{"unended text waits",
                  "\x02"
                  "12 abc",
                  0, "", 7, 0},
             Case{"text without end goes at the limit", longText, 0, "", 0, 0},
             Case{"frame behind an endless text", longText + kWorked, 1, "\x06\x85", 0, 1},
             Case{"bare end", "\x03\x03", 0, "", 0, 0},
         }) {
        const Decoded decoded = Decode(WithSettings(), {c.stream}, kNow);
        EXPECT_EQ(decoded.events.size(), c.events) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
        EXPECT_EQ(decoded.trafficNotes, c.traffic) << c.name;
    }
}

TEST(GoogolT1, ReadsBothKindsOfFrame) {
    const GoogolSettings withTime{.TimeStampFromRBM = true};
    const GoogolSettings anyWord{.GoogolTextIsAlarmCode = true};
    const GoogolSettings cleaned{.cleaning = {.DOS7bitASCIItoISOLatin1 = true,
                                              .AdjustTabAndSpace = true,
                                              .TextCrLfReplaceCharacter = '/'}};
    struct Case {
        const char* name;
        GoogolSettings settings;
        Text stream;
        Text facts;
        Text replies;
    };
    for (const Case& c : {
             Case{"worked",
                  {},
                  kWorked,
                  "label=2105; code=1234; text=Larm hall; number=17; raw=1234 Larm hall",
                  "\x06\x85"},
             Case{"its time", withTime, kWorked,
                  "time=2024-05-17 13:45:30; label=2105; code=1234; text=Larm hall; number=17; "
                  "raw=1234 Larm hall",
                  "\x06\x85"},
             Case{"no date", withTime, Frame("\x18\x0D" + Data(17, 1, "5").substr(2)),
                  "label=2100; code=5; number=1; speech=yes; raw=5", "\x06"},
             Case{"class of SIA is a number, not a digit",
                  {},
                  Frame(Data(49, 0, "7 x")),
                  "label=2107; code=7; text=x; number=8; raw=7 x",
                  "\x06"},
             Case{"unknown class",
                  {},
                  Frame(Data('0', 0, "7 x")),
                  "code=7; text=x; number=0; raw=7 x",
                  "\x06"},
             Case{"no class", {}, Frame(""), "number=0", "\x06"},
             Case{"no text", {}, Frame(Data(18, 2, "")), "label=2101; number=18; speech=yes", "\x06"},
             Case{"sequence with bit 7",
                  {},
                  Frame(Data(17, 0, "1"), '0', '\x82'),
                  "label=2100; code=1; number=1; raw=1",
                  "\x06\x82"},
             Case{"text frame",
                  {},
                  "\x02 1234 Larm hall \x03",
                  "label=T1 text; code=1234; text=Larm hall; number=21; raw=1234 Larm hall",
                  ""},
             Case{"text without code",
                  {},
                  "\x02"
                  "AB12 x\x03",
                  "label=T1 text; text=AB12 x; number=21; raw=AB12 x",
                  ""},
             Case{"any word is the code", anyWord,
                  "\x02"
                  "AB12 x\x03",
                  "label=T1 text; code=AB12; text=x; number=21; raw=AB12 x", ""},
             Case{"clean-up", cleaned,
                  "\x02"
                  "1 [}\r\n\tb   c\x03",
                  "label=T1 text; code=1; text=\\xC4\\xE5/ b c; number=21; raw=1 \\xC4\\xE5/ b c", ""},
             Case{"control bytes in the data",
                  {},
                  Frame(Data(17, 0, Text("1 \x02\x03\x07\0\xFF", 7))),
                  "label=2100; code=1; text=\\x02\\x03\\x07\\x00\\xFF; number=1; raw=1 "
                  "\\x02\\x03\\x07\\x00\\xFF",
                  "\x06"},
         }) {
        const Decoded decoded = Decode(WithSettings(c.settings), {c.stream}, kNow);
        EXPECT_EQ(decoded.facts, std::vector<Text>{c.facts}) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest, "") << c.name;
    }
}

TEST(GoogolT1, GivesTheSameHoweverTheStreamIsCut) {
    const NewDecoder fresh = [] { return WithSettings(); };
    const std::vector<Text> streams = {kWorked, "\x07",
                                       "\x02"
                                       "77 b\x03",
                                       Frame(Data(17, 3, "\x01\x02\x03\x07"))};
    Text all = "xx";
    for (const Text& stream : streams) all += stream;
    ExpectSameHoweverCut(fresh, all, kNow);
    ExpectPairsAsOneByOne(fresh, streams, kNow);
    ExpectWithstands(fresh, streams);
}

TEST(GoogolT1, SetsTheClockOfTheFarEnd) {
    const GoogolSettings hourly{.SetTimeInterval = 60, .PortDescription = "T1"};
    struct Tick {
        std::int64_t second;
        bool canSend;
        bool isSent;
    };
    GoogolClock clock;
    // Five seconds after the start count as the first setting.
    for (const Tick& t : {Tick{100, true, false}, Tick{3705, true, false}, Tick{3706, false, false},
                          Tick{3707, true, true}, Tick{3708, true, false}, Tick{7308, true, true}}) {
        const TelegramStep step = SetClockInGoogolT1(
            clock, hourly, {.now = kNow, .monotonicMs = t.second * 1000, .canSend = t.canSend});
        EXPECT_EQ(step.reply, t.isSent ? "\x02T25112106050405\x03" : "") << t.second;
        EXPECT_EQ(step.notes.size(), t.isSent ? 1u : 0u) << t.second;
    }
    GoogolClock never;
    SetClockInGoogolT1(never, {}, {.canSend = true});
    EXPECT_EQ(SetClockInGoogolT1(never, {}, {.monotonicMs = 1LL << 40, .canSend = true}).reply, "");
}

}  // namespace
}  // namespace nordkeep
