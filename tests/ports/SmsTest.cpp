#include "ports/formats/Sms.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

/// "sender|code|text" of an answer; "none" without an event.
Text Decoded(const Text& answer, const SmsSettings& settings = {}) {
    const auto decoded = DecodeSms(answer, settings, kNow);
    if (!decoded) return "none";
    EXPECT_EQ(decoded->labelTexts[0], 1038);
    EXPECT_EQ(decoded->event.TranslationNumberToUse, Protocol::SMS);
    return decoded->event.Originator + "|" + decoded->event.DefaultAlarmCode + "|" + decoded->event.ExtraText;
}

/// Fresh settings but for what `change` sets.
template <class Change>
SmsSettings With(const Change& change) {
    SmsSettings settings{};
    change(settings);
    return settings;
}

Text Answer(const Text& sender, const Text& text) {
    return "\r\n+CMGR: \"REC UNREAD\",\"" + sender + "\",,\"24/05/17,13:45:30+08\"\r\n" + text +
           "\r\n\r\nOK\r\n";
}

TEST(Sms, IsDecodedFromTheModemsAnswer) {
    struct Case {
        Text answer;
        const char* decoded;
    };
    const Case cases[] = {
        {Answer("+46701234567", "1234 Larm hall"), "0046701234567|1234|Larm hall"},
        {"AT+CMGR=1\r" + Answer("0701234567", "Larm"), "0701234567||Larm"},
        {Answer("Company", "Larm"), "||Larm"},
        {Answer("+", "Larm"), "||Larm"},
        {Answer("0", "1234"), "||1234"},
        {Answer("070", "1 a\r\nb\r\n"), "070|1|a\tb\t"},
        {Answer("070", "a\r\nOK\r\nb"), "070||a"},
        {Answer("070", "all OK"), "070||all OK"},
        {Answer("070", "  a\tb  c "), "070||a\tb  c "},
        {Answer("070", ""), "none"},
        {Answer("070", "OK"), "none"},
        {Answer("070", "K"), "none"},
        {"\r\n+CMGR: 0,,0\r\n\r\nOK\r\n", "none"},
        {"+CMGR:", "none"},
    };
    for (const Case& c : cases) EXPECT_EQ(Decoded(c.answer), c.decoded) << c.answer;
}

TEST(Sms, FollowsTheSettings) {
    EXPECT_EQ(
        Decoded(Answer("070", "1234 a"), With([](auto& s) { s.ParseNumericIDCodeFieldUsingSpace = false; })),
        "070||1234 a");
    const SmsSettings bySender = With([](auto& s) { s.UseSenderAsIDCode = true; });
    EXPECT_EQ(Decoded(Answer("070", "1234 a"), bySender), "070|070|a");
    EXPECT_EQ(Decoded(Answer("070", ""), bySender), "070|070|");
    EXPECT_EQ(Decoded(Answer("Firm", "12 a"), bySender), "|12|a");
    const SmsSettings blanks = With([](auto& s) {
        s.SMSCrLfReplaceCharacter = 32;
        s.cleaning.AdjustTabAndSpace = true;
    });
    EXPECT_EQ(Decoded(Answer("070", "a\t\tb\r\nc"), blanks), "070||a b c");
    EXPECT_EQ(Decoded(Answer("070", Text("{|} [\\]\x00\x0E", 9) + "\r\nx"),
                      With([](auto& s) { s.IA5toISOLatin1 = true; })),
              "070||\xE4\xF6\xF1 \xC4\xD6\xD1@\xC5\xC7x");
    EXPECT_EQ(Decoded(Answer("070", "\x84\x86\x94"),
                      With([](auto& s) { s.cleaning.DOS8bitASCIItoISOLatin1 = true; })),
              "070||\xE4\xE5\xF6");
}

TEST(Sms, KnowsTheEndOfTheAnswer) {
    const Text answer = Answer("070", "all OK\r\nmore");
    for (std::size_t cut = 0; cut + 2 < answer.size(); ++cut)
        EXPECT_FALSE(IsSmsComplete(answer.substr(0, cut)));
    EXPECT_TRUE(IsSmsComplete(answer));
}

TEST(Sms, TellsTheCallersNumber) {
    struct Case {
        const char* line;
        const char* number;
    };
    const Case cases[] = {
        {"+CLIP: \"0701234567\",129,\"\",,\"\",0", "0046701234567"},
        {"+CLIP: \"+46701234567\",145", "0046701234567"},
        {"+CLIP: \"004670\",129", "004670"},
        {"+CLIP: \"0701\",161", "0701"},
        {"+CLIP: \"\",128", ""},
        {"+CLIP: \"0\",129", "0046"},
        {"+CLIP:", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(CallerNumber(c.line, {}), c.number) << c.line;
    EXPECT_EQ(CountryCode("046"), "0046");
    EXPECT_EQ(CountryCode("0046"), "0046");
    EXPECT_EQ(CountryCode("46"), "0046");
    EXPECT_EQ(CountryCode(""), "00");
}

}  // namespace
}  // namespace nordkeep
