#include "ports/XmlGateways.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

const Text kHead = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
const Text kMini =
    "<LarmTelegram><Anvandare>u</Anvandare><Losen>p</Losen><LarmTyp>7</LarmTyp><LarmId>1234</LarmId>"
    "<TillaggsInfo>Port A</TillaggsInfo></LarmTelegram>";
const Text kMiniReply =
    "<larmtelegramkvittens><larmid>1234</larmid><status>0</status></larmtelegramkvittens>";
const Text kAlarmInner =
    "<Reference>R1</Reference><Authentication>pw</Authentication><TransmitterCode>4711</TransmitterCode>"
    "<EventCode>130</EventCode><EventText>Inbrott</EventText>";
const Text kAlarm = "<AlarmRequest>" + kAlarmInner + "</AlarmRequest>";
const Text kAlarmReply = kHead +
                         "<alarmresponse><reference>R1</reference><status>0</status><info>OK</info>"
                         "</alarmresponse>";
const Text kAlarmFacts =
    "label=2225; type=130; code=4711; text=Inbrott; caller=pw; number=33; xml=" + kAlarmInner;
const Text kPing = "<PingRequest><Reference>R2</Reference></PingRequest>";
const Text kPingReply = kHead +
                        "<pingresponse><reference>R2</reference><status>0</status><info>OK</info>"
                        "<arrivaltime>2025-11-21 06:05:04.666</arrivaltime></pingresponse>";

using NextStep = TelegramStep (*)(TextView, const XmlGatewaySettings&, OleDate);

NewDecoder Fresh(NextStep next, XmlGatewaySettings settings = {}) {
    return [=]() -> Decoder {
        return [=](TextView received, OleDate now) { return next(received, settings, now); };
    };
}

TEST(XmlText, FindsTheFirstElementAndTheFirstEndBehindIt) {
    struct Case {
        const char* text;
        const char* exact;
        const char* anyCase;
    };
    for (const Case& c : {Case{"", "", ""}, Case{"<A>x", "", ""}, Case{"x</A>", "", ""},
                          Case{"</A><A>x</A>", "x", "x"}, Case{"<a>x</A><A>y</a></A>", "y</a>", "x"},
                          Case{"<A><A>x</A></A>", "<A>x", "<A>x"}, Case{"<A b=\"1\">x</A>", "", ""},
                          Case{"<A>&lt;</A>", "&lt;", "&lt;"}, Case{"<AB>x</AB>", "", ""}}) {
        EXPECT_EQ(GetXmlElement(c.text, "A", XmlNames::Exact), c.exact) << c.text;
        EXPECT_EQ(GetXmlElement(c.text, "A", XmlNames::IgnoreCase), c.anyCase) << c.text;
    }
}

TEST(XmlGateways, AnswerEveryCompleteDocument) {
    const Text miniFacts = "label=2228; type=7; code=1234; text=Port A; caller=u; number=24";
    struct Case {
        const char* name;
        NextStep next;
        Text stream;
        std::vector<Text> facts;
        Text replies;
        std::size_t rest;
        int steps;
    };
    const Text empty = "<LarmTelegram></LarmTelegram>";
    for (const Case& c : {
             Case{"no end",
                  NextSosAccessMiniStep,
                  kMini.substr(0, kMini.size() - 1),
                  {},
                  "",
                  kMini.size() - 1,
                  0},
             Case{"end in front of start", NextSosAccessMiniStep, "</LarmTelegram>x", {}, "", 16, 0},
             Case{"an empty document blocks the line",
                  NextSosAccessMiniStep,
                  empty + kMini,
                  {},
                  "",
                  empty.size() + kMini.size(),
                  0},
             Case{"names in another case",
                  NextSosAccessV4Step,
                  "<alarmrequest>x</alarmrequest>",
                  {},
                  "",
                  30,
                  0},
             Case{"mini", NextSosAccessMiniStep, "noise" + kMini, {miniFacts}, kMiniReply, 0, 1},
             Case{"two in one chunk have one reply",
                  NextSosAccessMiniStep,
                  kMini + "\r\n" + kMini + "<Larm",
                  {miniFacts, miniFacts},
                  kMiniReply + kMiniReply,
                  5,
                  1},
             Case{"Aptus",
                  NextAptusMiniStep,
                  kMini,
                  {"label=2229; type=7; code=Port A; text=1234; caller=u; number=30"},
                  kMiniReply,
                  0,
                  1},
             Case{"elements missing",
                  NextSosAccessMiniStep,
                  "<LarmTelegram>x</LarmTelegram>",
                  {"label=2228; type=0; number=24"},
                  "<larmtelegramkvittens><larmid></larmid><status>0</status></larmtelegramkvittens>",
                  0,
                  1},
             Case{"type beyond 16 bits",
                  NextSosAccessMiniStep,
                  "<LarmTelegram><LarmTyp>32768</LarmTyp></LarmTelegram>",
                  {"label=2228; number=24"},
                  "<larmtelegramkvittens><larmid></larmid><status>0</status></larmtelegramkvittens>",
                  0,
                  1},
             Case{"alarm request", NextSosAccessV4Step, kAlarm, {kAlarmFacts}, kAlarmReply, 0, 1},
             Case{"a ping in front of an alarm is answered too",
                  NextSosAccessV4Step,
                  kPing + kAlarm,
                  {kAlarmFacts},
                  kPingReply + kAlarmReply,
                  0,
                  1},
             Case{"a ping behind",
                  NextSosAccessV4Step,
                  kAlarm + kPing,
                  {kAlarmFacts},
                  kAlarmReply + kPingReply,
                  0,
                  1},
         }) {
        const Decoded decoded = Decode(Fresh(c.next)(), {c.stream}, kNow);
        EXPECT_EQ(decoded.facts, c.facts) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
        EXPECT_EQ(decoded.trafficNotes, c.steps) << c.name;
        EXPECT_EQ(decoded.closes, c.steps) << c.name;
    }
}

TEST(XmlGateways, CanBeToldToIgnoreTheCaseOfNames) {
    const Text stream = "<alarmrequest><reference>R1</reference><EVENTCODE>3</EVENTCODE></alarmrequest>";
    const Decoded decoded =
        Decode(Fresh(NextSosAccessV4Step, {.XmlNamesIgnoreCase = true})(), {stream}, kNow);
    ASSERT_EQ(decoded.events.size(), 1u);
    EXPECT_EQ(decoded.events[0].DefaultType, 3);
    EXPECT_EQ(decoded.replies, kAlarmReply);
}

TEST(XmlGateways, CloseTheLineOnlyBehindTheLastReplyOfAFlood) {
    Text flood;
    for (int i = 0; i < 64 + 5; ++i) flood += kPing;
    const Decoded decoded = Decode(Fresh(NextSosAccessV4Step)(), {flood}, kNow);
    EXPECT_EQ(decoded.replies.size(), 69 * kPingReply.size());
    EXPECT_EQ(decoded.trafficNotes, 2);
    EXPECT_EQ(decoded.closes, 1);
}

TEST(XmlGateways, GiveTheSameHoweverTheStreamIsCut) {
    const NewDecoder mini = Fresh(NextSosAccessMiniStep);
    const NewDecoder v4 = Fresh(NextSosAccessV4Step);
    ExpectSameHoweverCut(mini, "  " + kMini, kNow);
    ExpectSameHoweverCut(v4, "\r\n" + kAlarm, kNow);
    ExpectSameHoweverCut(v4, kPing, kNow);
    ExpectPairsAsOneByOne(v4, {kAlarm, kPing}, kNow);
    ExpectPairsAsOneByOne(mini, {kMini, "\n" + kMini}, kNow);
    ExpectWithstands(v4,
                     {"<AlarmRequest>", "</AlarmRequest>", "<PingRequest>", "</PingRequest>", kAlarm, kPing});
    ExpectWithstands(mini, {"<LarmTelegram>", "</LarmTelegram>", kMini});
}

}  // namespace
}  // namespace nordkeep
