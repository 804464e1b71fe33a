#include "ports/SurGard.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});
const Text kEnd = "\x14";
const Text kContactId = "5011 181234E12101001";
const Text kSia = "S011[#1234|Nri1BA01]";

SurGardSettings Defaults() {
    return {.unknownMessage = "Unknown"};
}

NewDecoder Fresh(SurGardSettings settings = Defaults()) {
    return [settings]() -> Decoder {
        const auto wait = std::make_shared<SiaWait>();
        return
            [=](TextView received, OleDate now) { return NextSurGardStep(received, settings, *wait, now); };
    };
}

TEST(SurGard, ReportsAndRefusesWhatItDoesNotKnow) {
    struct Case {
        const char* name;
        Text stream;
        std::vector<Text> facts;
        Text replies;
        std::size_t rest;
        int traffic;
    };
    const auto unknown = [](const Text& line, const Text& raw) {
        return "label=Nordkeep; code=00000000; text=Unknown; number=0; line=" + line + "; raw=" + raw;
    };
    for (const Case& c : std::vector<Case>{
             {"no end", kContactId, {}, "", kContactId.size(), 0},
             {"empty", kEnd + kEnd, {}, "", 0, 0},
             {"family of no name", "Z011 xx" + kEnd, {unknown("1:1", "Z011 xx")}, "\x15", 0, 1},
             {"one character", "x" + kEnd, {unknown("0:0", "x")}, "\x15", 0, 1},
             {"no heartbeat without its mark",
              "1011           x@" + kEnd,
              {unknown("1:1", "1011           x@")},
              "\x15",
              0,
              1},
             {"heartbeat", "1011           @    " + kEnd, {}, "\x06", 0, 1},
             {"unknown system code",
              "0000ZZ9X" + kEnd,
              {"label=Nordkeep; code=0000ZZ9X; text=Unknown system message: ZZ9X; number=0; line=0:0; "
               "raw=0000ZZ9X"},
              "\x15",
              0,
              1},
             {"unknown, then good",
              "Q" + kEnd + kSia + kEnd,
              {unknown("0:0", "Q"),
               "label=2211; code=BA01; object=001234; number=8; line=1:1; modifiers=ri1; "
               "raw=[4]#1234[7]Nri1BA01; block=N"},
              "\x15\x06",
              0,
              2},
         }) {
        const Decoded decoded = Decode(Fresh()(), {c.stream}, kNow);
        EXPECT_EQ(decoded.facts, c.facts) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
        EXPECT_EQ(decoded.trafficNotes, c.traffic) << c.name;
    }
}

TEST(SurGard, NamesTheSystemMessages) {
    struct Case {
        const char* code;
        const char* text;
    };
    for (const Case& c :
         {Case{"A01", "Printer Error"}, Case{"r12", "9V Batt. Restr"},
          Case{"AC1", "Internal communication error"}, Case{"ACE", "Internal communication error"},
          Case{"AF3", "Line Card 3 Absent"}, Case{"REa", "Line Card A Restored"}, Case{"AD0", "CPM2 Reset"},
          Case{"AF0", "Unknown system message: AF0"}, Case{"ACF", "Unknown system message: ACF"},
          Case{"AF?", "Unknown system message: AF?"}, Case{"A0", "Unknown system message: A0"}}) {
        const Decoded decoded = Decode(Fresh()(), {"0000" + Text(c.code) + kEnd}, kNow);
        ASSERT_EQ(decoded.events.size(), 1u) << c.code;
        EXPECT_EQ(decoded.events[0].ExtraText, c.text);
        EXPECT_EQ(decoded.events[0].DefaultAlarmCode, "0000" + Text(c.code));
    }
}

TEST(SurGard, FindsTheQualifierOfContactId) {
    struct Case {
        const char* name;
        const char* message;
        const char* code;
        bool asNumber = true;
    };
    for (const Case& c : {Case{"four digits", "5011 181234E12101001", "123418112101001"},
                          Case{"as a letter", "5011 181234e12101001", "123418E12101001", false},
                          Case{"restore", "5FE1 181234R12101001", "123418312101001"},
                          Case{"previous", "5011 181234P12101001", "123418612101001"},
                          Case{"eight digits", "5011 1812345678R12101001", "1234567818312101001"},
                          Case{"a clock behind", "5011 181234E1210100106:05:04-21/11", "123418112101001"},
                          Case{"eight digits, a clock behind", "5011 1812345678E1210100106:05:04-21/11",
                               "1234567818112101001"},
                          Case{"none", "5011 18123412101001", "12341210100118"},
                          Case{"cut short", "5011 18E", "181"}, Case{"nothing behind the family", "5", ""}}) {
        SurGardSettings settings = Defaults();
        settings.MLR2QualifierAsNumber = c.asNumber;
        const Decoded decoded = Decode(Fresh(settings)(), {c.message + kEnd}, kNow);
        ASSERT_EQ(decoded.events.size(), 1u) << c.name;
        EXPECT_EQ(decoded.events[0].DefaultAlarmCode, c.code) << c.name;
        EXPECT_EQ(decoded.replies, "\x06") << c.name;
    }
}

TEST(SurGard, LetsPositionSevenNameTheFamilyWhenTheFirstDoesNot) {
    const Decoded decoded = Decode(Fresh()(), {"80A2  h 123456 xxx78" + kEnd + "8012  s" + kEnd}, kNow);
    EXPECT_EQ(decoded.facts,
              std::vector<Text>{"label=2000; code=12345678; number=1; line=10:2; raw=80A2  h 123456 xxx78"});
    EXPECT_EQ(decoded.replies, "\x06\x06");
}

TEST(SurGard, GivesTheSameHoweverTheStreamIsCut) {
    const std::vector<Text> streams = {kContactId + kEnd, kSia + kEnd, "0000AF3" + kEnd, "Z011 xx" + kEnd,
                                       "1011           @    " + kEnd};
    Text all;
    for (const Text& stream : streams) all += stream;
    ExpectSameHoweverCut(Fresh(), all, kNow);
    ExpectPairsAsOneByOne(Fresh(), streams, kNow);
    ExpectWithstands(Fresh(), streams);
}

/// Messages of one line with the wait on; each gives back the codes and texts that become events.
struct WaitingLine {
    SurGardSettings settings = Defaults();
    SiaWait wait{};

    explicit WaitingLine(int seconds) {
        settings.sia = {.SIAAsciiBlockAsSeparateEvent = false, .WaitForMLR2SIAASCIIBlockTimeout = seconds};
    }
    Text Receive(const Text& message) {
        const TelegramStep step = NextSurGardStep("S011" + message + kEnd, settings, wait, kNow);
        EXPECT_EQ(step.reply, "\x06") << "the receiver is answered at once";
        return Codes(step.events);
    }
    Text Tick(int ms) { return Codes(wait.Tick(ms, settings.sia, kNow)); }
    static Text Codes(const std::vector<DecodedEvent>& events) {
        Text codes;
        for (const DecodedEvent& e : events)
            codes += e.event.DefaultAlarmCode + "(" + e.event.ExtraText + ")";
        return codes;
    }
};

TEST(SiaWait, JoinsAnEventWithTheTextThatFollows) {
    WaitingLine line(2);
    EXPECT_EQ(line.Receive("[#1|NBA01]"), "");
    EXPECT_EQ(line.Receive("[#2|NFA02]"), "");
    EXPECT_EQ(line.Receive("[#1|AHall window]"), "BA01(Hall window)");
    EXPECT_EQ(line.Receive("[#1|NBA03]"), "");
    EXPECT_EQ(line.Receive("[#1|NBA04]"), "BA03()");
    EXPECT_EQ(line.Receive("[#1|NBA05|AAttic]"), "BA04()BA05(Attic)");
    EXPECT_EQ(line.Receive("[#3|Alone]"), "");
    EXPECT_EQ(line.wait.Size(), 1u);
    // Two seconds have to pass whole; a text that comes too late finds nothing.
    EXPECT_EQ(line.Tick(1000), "");
    EXPECT_EQ(line.Receive("[#4|NBA06]"), "");
    EXPECT_EQ(line.Tick(1000), "");
    EXPECT_EQ(line.Tick(1000), "FA02()");
    EXPECT_EQ(line.Tick(1000), "BA06()");
    EXPECT_EQ(line.Receive("[#4|ALate]"), "");
    EXPECT_EQ(line.wait.Size(), 0u);
}

TEST(SiaWait, ReportsWhatWaitsWhenTheProgramEnds) {
    WaitingLine line(60);
    line.Receive("[#1|NBA01]");
    line.Receive("[#2|NBA02]");
    EXPECT_EQ(WaitingLine::Codes(line.wait.Finish(line.settings.sia, kNow)), "BA01()BA02()");
}

TEST(SiaWait, DoesNotWaitWhenOffAndNotForTooMany) {
    WaitingLine off(0);
    EXPECT_EQ(off.Receive("[#1|NBA01]"), "BA01()");
    WaitingLine line(60);
    for (int account = 0; account < 1000; ++account) line.Receive("[#" + std::to_string(account) + "|NBA01]");
    EXPECT_EQ(line.Receive("[#x|NBA02]"), "BA01()");
    EXPECT_EQ(line.wait.Size(), 1000u);
}

}  // namespace
}  // namespace nordkeep
