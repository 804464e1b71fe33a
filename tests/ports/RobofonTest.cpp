#include "ports/formats/Robofon.h"
#include "tests/doubles/RobofonTelegram.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

Text Full(const Text& time = "2405171345", char status = '\x29', char classCode = '0',
          const Text& id = "12340001") {
    return RobofonTelegramOf("  P" + time + status + classCode + id);
}

Decoder WithSettings(RobofonSettings settings = {}) {
    return [settings](TextView received, OleDate now) { return NextRobofonStep(received, settings, now); };
}

TEST(Robofon, RefusesWhatIsNoTelegramAndRecovers) {
    Text wrongCheck = Full();
    wrongCheck.back() ^= 1;
    Text wrongEnd = Full();
    wrongEnd[24] = 'x';
    wrongEnd.back() ^= 'x' ^ bytes::ETX;
    struct Case {
        const char* name;
        Text stream;
        std::size_t events;
        Text replies;
        std::size_t rest;
    };
    const Text noise("\0\xFFxyz\x03\x06", 7);
    for (const Case& c :
         {Case{"wrong check", wrongCheck, 0, "\x15", 0}, Case{"wrong end", wrongEnd, 0, "\x15", 0},
          Case{"noise only", noise, 0, "", 0}, Case{"noise in front", noise + Full(), 1, "\x06", 0},
          Case{"line test", "\x07", 0, "\x06", 0},
          Case{"line test in noise",
               "ab\x07"
               "cd" +
                   Full(),
               1, "\x06\x06", 0},
          Case{"bad, then good", wrongCheck + Full(), 1, "\x15\x06", 0},
          Case{"good, then part", Full() + Full().substr(0, 25), 1, "\x06", 25},
          Case{"unknown kind",
               RobofonTelegramOf("  X2405171345"
                                 "\x29"
                                 "012340001"),
               0, "\x06", 0},
          Case{"glued", Full() + Full() + "\x07" + Full(), 3, "\x06\x06\x06\x06", 0}}) {
        const Decoded decoded = Decode(WithSettings(), {c.stream}, kNow);
        EXPECT_EQ(decoded.events.size(), c.events) << c.name;
        EXPECT_EQ(decoded.replies, c.replies) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
    }
}

TEST(Robofon, ReadsTheFieldsOfBothKinds) {
    struct Case {
        const char* name;
        Text telegram;
        Text summary;
        int label;
    };
    for (const Case& c :
         {Case{"full", Full(), "12340001||2:1|1|12340001|speech", 2000},
          Case{"Contact ID", Full("2405171345", '\x70', 'B'), "12340001||7:0|12|12340001", 2011},
          Case{"blanks and case", Full("2405171345", '\x01', 'N', " ab12   "), "AB12||0:1|32|AB12", 2224},
          Case{"own", Full("2405171345", '\x01', 'S'), "12340001||0:1|0|12340001", 0},
          Case{"unknown class", Full("2405171345", '\x01', '3'), "12340001||0:1|0|12340001", 0},
          Case{"short",
               RobofonTelegramOf("  TABCD    xx"
                                 "\x10"
                                 "0"
                                 "EF      "),
               "ABCDEF||1:0|1|ABCDEF", 2000},
          Case{"short, second part only",
               RobofonTelegramOf("  TABCD    xx"
                                 "\x10"
                                 "5"
                                 "EF      "),
               "EF||1:0|6|EF", 2005},
          Case{"bytes of all kinds",
               Full("2405171345", '\x80', '0',
                    Text("\0\x02\x03\x07\xE5\xFF"
                         "12",
                         8)),
               Text("\0\x02\x03\x07\xC5\x9F"
                    "12||0:0|1|\0\x02\x03\x07\xC5\x9F"
                    "12",
                    24),
               2000}}) {
        const TelegramStep step = NextRobofonStep(c.telegram, {}, kNow);
        ASSERT_EQ(step.events.size(), 1u) << c.name;
        EXPECT_EQ(Summary(step.events[0].event), c.summary) << c.name;
        EXPECT_EQ(step.events[0].labelTexts[0], c.label) << c.name;
        EXPECT_EQ(step.events[0].event.AlarmTime, kNow) << c.name;
        EXPECT_TRUE(step.isTraffic) << c.name;
    }
}

TEST(Robofon, TakesTheTelegramsTimeOnlyWhenItIsOne) {
    const auto timeOf = [](const Text& digits) {
        return NextRobofonStep(Full(digits), {{.TimeStampFromRBM = true}}, kNow).events.at(0).event.AlarmTime;
    };
    EXPECT_EQ(timeOf("2405171345"), OleDate::FromCivil({2024, 5, 17, 13, 45, 0}));
    EXPECT_EQ(timeOf("4901010000"), OleDate::FromCivil({2049, 1, 1}));
    EXPECT_EQ(timeOf("9901010000"), OleDate::FromCivil({1999, 1, 1}));
    for (const char* digits : {"2402301345", "2405172445", "          ", "24051713 5"}) {
        EXPECT_EQ(timeOf(digits), kNow) << digits;
    }
}

TEST(Robofon, GivesTheSameEventsHoweverTheStreamIsCut) {
    const Text stream = "\x07" + Full() + "noise" + Full("2405171345", '\x02', 'B', "55550099") + Full();
    const Decoded whole = Decode(WithSettings(), {stream}, kNow);
    ASSERT_EQ(whole.events.size(), 3u);
    for (std::size_t cut = 1; cut < stream.size(); ++cut) {
        const Decoded inTwo = Decode(WithSettings(), {stream.substr(0, cut), stream.substr(cut)}, kNow);
        EXPECT_EQ(Summaries(inTwo), Summaries(whole)) << cut;
        EXPECT_EQ(inTwo.replies, whole.replies) << cut;
    }
    std::vector<Text> singles;
    for (const char c : stream) singles.emplace_back(1, c);
    EXPECT_EQ(Summaries(Decode(WithSettings(), singles, kNow)), Summaries(whole));
}

}  // namespace
}  // namespace nordkeep
