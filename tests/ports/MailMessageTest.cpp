#include "ports/mail/MailMessage.h"
#include "ports/mail/MailText.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2025, 11, 21, 6, 5, 4});

TEST(MailText, DecodesHeaderValues) {
    struct Case {
        const char* value;
        const char* decoded;
    };
    const Case cases[] = {
        {"Larm", "Larm"},
        {"=?utf-8?q?Br=C3=A5nd_p=C3=A5_vinden?=", "Br\xE5nd p\xE5 vinden"},
        {"=?UTF-8?B?w7Z2ZXI=?= end", "\xF6ver end"},
        {"=?iso-8859-1?Q?=E5?= =?iso-8859-1?Q?=E4?=", "\xE5\xE4"},
        {"=?utf-8?Q?=C3?= \t=?utf-8?Q?=A5?= x", "\xE5 x"},  // a letter cut in two
        {"=?iso-8859-15?q?5_=A4?=", "5 \x80"},
        {"=?Windows-1252?Q?=80?=", "\x80"},
        {"=?us-ascii*en?Q?A=20b?=", "A b"},
        {"=?utf-8?Q?=E2=98=83?=", "?"},
        {"=?klingon?Q?=C1?= =?utf-8?Q?a?=", "=?klingon?Q?=C1?= a"},
        {"=?koi8-r?Q?=C1?= =?iso-8859-2?Q?=B9?=", "?\x9A"},
        {"a =?utf-8?Q? =?x", "a =?utf-8?Q? =?x"},
        {"=?utf-8?Q", "=?utf-8?Q"},
        {"=?utf-8?X?a?=", "=?utf-8?X?a?="},
        {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(DecodeHeaderWords(c.value), c.decoded) << c.value;
}

TEST(MailText, DecodesLooseWordsAndTransferEncodings) {
    EXPECT_EQ(DecodeLooseWords("=?ISO-8859-1?q?Larm =E5?= ?="), "Larm \xE5 ?=");
    EXPECT_EQ(DecodeLooseWords("ID=1234 =G1 =4"),
              "ID\x12"
              "34 =G1 =4");
    EXPECT_EQ(DecodeBase64("TGF y\r\nbQ==TGFy"), "Larm");
    EXPECT_EQ(DecodeBase64("TGFyb!Q"), "Larm");
}

TEST(MailText, MatchesWildcards) {
    struct Case {
        const char* text;
        const char* pattern;
        bool matches;
    };
    const Case cases[] = {
        {"", "*", true},        {"LARM 1", "larm*", true},   {"ALARM", "*LARM", true}, {"LARM", "?ARM", true},
        {"LARM", "LAR", false}, {"LAR", "LARM", false},      {"AXBXC", "A*B*C", true}, {"", "?", false},
        {"\xC5", "\xE5", true}, {"AAAAAB", "*A*A*C", false}, {"A", "A**", true},
    };
    for (const Case& c : cases) EXPECT_EQ(MatchesWildcard(c.text, c.pattern), c.matches) << c.pattern;
}

/// "from|to|subject|body" of a mail.
Text Read(const Text& mail) {
    const MailMessage read = ReadMail(mail);
    return read.from + "|" + read.to + "|" + read.subject + "|" + read.body;
}

TEST(MailMessage, ReadsHeaders) {
    EXPECT_EQ(Read("from: A <a@b>\r\nTO:c\r\nSubject: Larm\r\n\r\n1234 Hall\r\n"),
              "A <a@b>|c|Larm|1234 Hall");
    EXPECT_EQ(Read("Subject:\r\nSUBJECT: a\r\n\t b \r\n  c\r\nSubject: d\r\nX: 1\r\n y\r\n\r\nz"),
              "||a b c|z");
    EXPECT_EQ(Read("Subject: =?utf-8?Q?a=0D=0Ab?=\n\n"), "||a  b|");
    EXPECT_EQ(Read("Subject: a\r\n1234 no empty line"), "||a|");
    EXPECT_EQ(Read(" begins with a blank\r\n:\r\n\r\n\r\nb\r\n\r\n"), "|||b");
    EXPECT_EQ(Read(""), "|||");
}

TEST(MailMessage, ReadsRawLettersOfHeaders) {
    EXPECT_EQ(Read("Subject: L\xC3\xA5s\r\nFrom: \xE5\r\n\r\n"), "\xE5||L\xE5s|");
}

TEST(MailMessage, ReadsBodies) {
    struct Case {
        const char* type;
        const char* encoding;
        const char* body;
        const char* decoded;
    };
    const Case cases[] = {
        {"", "", "\xC3\xA5", "\xE5"},  // nothing says what the letters are, and they can only be that
        {"", "", "\xE5 \xC3\xA5", "\xE5 \xC3\xA5"},
        {"text/plain; charset = \"utf-8\"", "8bit", "\xC3\xA5", "\xE5"},
        {"text/plain; charset=utf-8", "",
         "\xEF\xBB\xBF"
         "1 \xC3\xA5",
         "1 \xE5"},
        {"text/plain; charset=utf-16", "base64", "//4xACAA5QA=", "1 \xE5"},
        {"text/plain; charset=iso-8859-2", "", "\xB9", "\x9A"},
        {"text/plain; charset=utf-8", "", "\xC3", "?"},
        {"text/plain; charset=\"utf-8\"", "8bit", "\xC3\xA5\r\n\r\n", "\xE5"},
        {"text/plain;charset=utf-8;format=flowed", "quoted-printable", "=C3=\r\n=A5=3D41", "\xE5=41"},
        {"text/plain; x-charset=utf-8; charset=iso-8859-1", "QUOTED-PRINTABLE", "=E5=\r\n", "\xE5"},
        {"text/plain; charset=utf-8", "base64", "DQrDpT0yMQ==", "\xE5=21"},
        {"text/plain; charset=klingon", "7bit", "a=20b", "a b"},
        {"text/html", "",
         "<html><head><title>x</title></head><style>p {}</style><p>1234 L&aring;s<br>Hall &lt;2&gt;",
         "1234 L\xE5s\r\nHall <2>"},
        {"text/html; charset=iso-8859-1", "quoted-printable", "<p>=E5&#228;&#xF6;&nbsp;a<b>b</b></p>=3D41",
         "\xE5\xE4\xF6 ab\r\n=41"},
        {"multipart/mixed", "", "no boundary", ""},
    };
    for (const Case& c : cases) {
        const Text mail = "Content-Type: " + Text(c.type) + "\r\nContent-Transfer-Encoding: " + c.encoding +
                          "\r\n\r\n" + c.body;
        EXPECT_EQ(ReadMail(mail).body, c.decoded) << c.type << " " << c.encoding;
    }
}

TEST(MailMessage, TakesTheFirstPlainTextOfSeveralParts) {
    const Text head = "Content-Type: multipart/mixed;\r\n boundary=\"o\"\r\n\r\npreamble\r\n";
    const Text alternative =
        "--o\r\nContent-Type: multipart/alternative; boundary=oi\r\n\r\n"
        "--oi\r\nContent-Type: text/html\r\n\r\n<b>\r\n"
        "--oi\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n1234 =E5=\r\n!\r\n--oi--\r\n";
    const Text attachment = "--o\r\nContent-Type: text/plain\r\n\r\nattached\r\n";
    const Text image = "--o\r\nContent-Type: image/png\r\n\r\nPNG\r\n";
    EXPECT_EQ(ReadMail(head + alternative + attachment + "--o--\r\n").body, "1234 \xE5!");
    EXPECT_EQ(ReadMail(head + image + attachment + "--o-- \r\nepilogue").body, "attached");
    EXPECT_EQ(ReadMail(head + image + "--o\r\nContent-Type: text/html\r\n\r\n<i>a</i>").body, "a");
    const Text file =
        "--o\r\nContent-Type: text/plain\r\nContent-Disposition: attachment; filename=a\r\n\r\nfile\r\n";
    EXPECT_EQ(ReadMail(head + file + attachment).body, "attached");
    EXPECT_EQ(ReadMail(head + file).body, "");
    EXPECT_EQ(ReadMail(head + image).body, "");
    EXPECT_EQ(ReadMail(head + "--other\r\n\r\nx").body, "");
    Text deep;
    for (int i = 0; i < 2000; ++i) deep += "Content-Type: multipart/mixed; boundary=o\r\n\r\n--o\r\n";
    EXPECT_EQ(ReadMail(deep).body, "");
}

TEST(MailEvent, SplitsTheFirstLine) {
    struct Case {
        const char* body;
        bool splits;
        const char* code;
        const char* text;
    };
    const Case cases[] = {
        {"1234 Larm hall\r\nmore", true, "1234", "Larm hall"},
        {"1234 Larm hall", false, "", "1234 Larm hall"},
        {"1234", true, "", "1234"},
        {"1234x a", true, "", "1234x a"},
        {" 1234 a", true, "1234", "a"},
        {"  Larm", true, "", "  Larm"},
        {"", true, "", ""},
    };
    for (const Case& c : cases) {
        const Text mail = "From: a@b\r\nSubject: S\r\n\r\n" + Text(c.body);
        const TelegramStep step =
            HandleMailMessage(mail, "env@c", {{.ParseNumericIDCodeFieldUsingSpace = c.splits}}, kNow);
        ASSERT_EQ(step.events.size(), 1u) << c.body;
        const IncomingEvent& event = step.events[0].event;
        EXPECT_EQ(event.DefaultAlarmCode, c.code) << c.body;
        EXPECT_EQ(event.ExtraText, c.text) << c.body;
        EXPECT_EQ(event.Originator, "a@b");
        EXPECT_EQ(event.ObjectID, "S");
        EXPECT_EQ(event.TranslationNumberToUse, Protocol::MAIL);
        EXPECT_EQ(step.events[0].labelTexts[0], 1156);
    }
    EXPECT_EQ(HandleMailMessage("\r\nx", "env@c", {}, kNow).events.at(0).event.Originator, "env@c");
}

TEST(MailEvent, IsDroppedByTheSubject) {
    const Text mail = "From: f\r\nTo: t\r\nSubject: =?utf-8?Q?=C3=85ska?=\r\n\r\nx";
    MailSettings settings{};
    settings.toText = " to ";
    settings.subjectText = " about ";
    for (const char* passing : {"*", "", " , ", "a, \xE5s*", "?SKA"}) {
        settings.SubjectFilter = passing;
        EXPECT_EQ(HandleMailMessage(mail, "", settings, kNow).events.size(), 1u) << passing;
    }
    for (const char* dropping : {"larm*", ",x", "?"}) {
        settings.SubjectFilter = dropping;
        const TelegramStep step = HandleMailMessage(mail, "", settings, kNow);
        EXPECT_TRUE(step.events.empty()) << dropping;
        ASSERT_EQ(step.notes.size(), 1u);
        EXPECT_EQ(step.notes[0].text, 1157);
        EXPECT_EQ(step.notes[0].tail, "f to t about \xC5ska");
    }
}

}  // namespace
}  // namespace nordkeep
