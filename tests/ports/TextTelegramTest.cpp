#include "ports/formats/TextTelegram.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

Decoder WithSettings(TextTelegramSettings settings = {}) {
    return [settings](TextView received, OleDate now) { return NextTextStep(received, settings, now); };
}

TEST(TextTelegram, CutsMessagesAndSplitsCodeFromText) {
    const TextTelegramSettings anyCode{.RequireNumericIdCode = false};
    const TextTelegramSettings lines{.WrapWithSTXETX = false};
    const TextTelegramSettings dos7{.cleaning = {.DOS7bitASCIItoISOLatin1 = true}};
    const TextTelegramSettings collapse{.cleaning = {.AdjustTabAndSpace = true}};
    struct Case {
        const char* name;
        TextTelegramSettings settings;
        Text stream;
        std::vector<Text> summaries;
        std::size_t rest;
    };
    for (const Case& c :
         std::vector<Case>{{"code and text",
                            {},
                            "\x02"
                            "1234 Larm hall\x03",
                            {"1234|Larm hall||21|1234 Larm hall"},
                            0},
                           {"code alone",
                            {},
                            "\x02"
                            "1234\x03",
                            {"1234|||21|1234"},
                            0},
                           {"no numeric code",
                            {},
                            "\x02"
                            "AB12 x\x03",
                            {"|AB12 x||21|AB12 x"},
                            0},
                           {"any code",
                            anyCode,
                            "\x02"
                            "AB12 x\x03\x02solo\x03",
                            {"AB12|x||21|AB12 x", "solo|||21|solo"},
                            0},
                           {"line feeds inside",
                            {},
                            "\x02"
                            "12 a\r\nb\x03",
                            {"12|a b||21|12 a\nb"},
                            0},
                           {"layout goes", {}, "\x02\f\t 12\t3 x \x03", {"123|x||21|123 x"}, 0},
                           {"empty message", {}, "\x02 \x03", {}, 0},
                           {"noise in front",
                            {},
                            "abc\x03xyz\x02"
                            "1 a\x03",
                            {"1|a||21|1 a"},
                            0},
                           {"end without start", {}, "abc\x03", {}, 0},
                           {"no end yet",
                            {},
                            "abc\x02"
                            "1 a",
                            {},
                            7},
                           {"lines", lines, "1 a\r\n\r\n2 b\nrest", {"1|a||21|1 a", "2|b||21|2 b"}, 4},
                           {"Swedish letters",
                            dos7,
                            "\x02"
                            "1 [}|\x03",
                            {"1|\xC4\xE5\xF6||21|1 \xC4\xE5\xF6"},
                            0},
                           {"blanks",
                            collapse,
                            "\x02"
                            "1   a   b\x03",
                            {"1|a b||21|1 a b"},
                            0},
                           {"NUL and high bytes",
                            {},
                            Text("\x02"
                                 "1 \0\x80\xFF\x03",
                                 7),
                            {Text("1|\0\x80\xFF||21|1 \0\x80\xFF", 15)},
                            0}}) {
        const Decoded decoded = Decode(WithSettings(c.settings), {c.stream});
        EXPECT_EQ(Summaries(decoded), c.summaries) << c.name;
        EXPECT_EQ(decoded.rest.size(), c.rest) << c.name;
        EXPECT_EQ(decoded.replies, "") << c.name;
    }
}

TEST(TextTelegram, GivesTheSameEventsHoweverTheStreamIsCut) {
    const Text stream =
        "xx\x02"
        "1234 Larm hall\x03\x02"
        "77 b\x03noise\x02"
        "8\x03";
    const std::vector<Text> whole = Summaries(Decode(WithSettings(), {stream}));
    ASSERT_EQ(whole.size(), 3u);
    for (std::size_t cut = 1; cut < stream.size(); ++cut) {
        EXPECT_EQ(Summaries(Decode(WithSettings(), {stream.substr(0, cut), stream.substr(cut)})), whole)
            << cut;
    }
}

TEST(ReplacementCharacter, StandsForALineFeedInBothParts) {
    const TextTelegramSettings settings{.cleaning = {.TextCrLfReplaceCharacter = '/'}};
    EXPECT_EQ(Summaries(Decode(WithSettings(settings), {"\x02"
                                                        "12 a\nb\x03"})),
              std::vector<Text>{"12|a/b||21|12 a\nb"});
}

}  // namespace
}  // namespace nordkeep
