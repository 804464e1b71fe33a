#include "ports/collectors/MailLines.h"
#include "ports/collectors/Pop3Session.h"
#include "ports/collectors/SmtpSession.h"
#include "ports/formats/ModemLines.h"
#include "ports/mail/MailMessage.h"
#include "ports/mail/MailText.h"
#include "tests/fuzz/Targets.h"

#include <cstdlib>

namespace nordkeep {
namespace {

void RunMail(TextView input) {
    const MailMessage mail = ReadMail(input);
    // Nothing in a mail grows by being read.
    if (mail.body.size() > input.size() || mail.subject.size() > input.size()) std::abort();
    MailSettings settings{};
    settings.SubjectFilter = "*a*b?*,L*";
    const TelegramStep step = HandleMailMessage(input, "a@b", settings, {});
    if (step.events.size() + step.notes.size() != 1) std::abort();
    MatchesWildcard(mail.subject, mail.body.substr(0, 20));
}

/// The lines of a session, cut into pieces of seven bytes.
template <class TakeLine>
void FeedLines(TextView input, TakeLine take) {
    constexpr std::size_t kPiece = 7;
    MailLines lines;
    for (std::size_t at = 0; at < input.size(); at += kPiece) {
        lines.Append(input.substr(at, kPiece));
        while (take(lines)) {
        }
    }
}

void RunPop3(TextView input) {
    Pop3Session session("u", "p", 3);
    FeedLines(input, [&](MailLines& lines) {
        const auto line = lines.Next(20);
        if (!line) return false;
        if (line->text.size() > 20) std::abort();
        const Pop3Step step = session.Take(line->text);
        if (step.send.find('\n') != Text::npos) std::abort();
        if (step.mail) session.OnMailHandled(line->text.size() % 2 == 0);
        return !step.isOver;
    });
}

void RunSmtp(TextView input) {
    SmtpSession session;
    FeedLines(input, [&](MailLines& lines) {
        const auto line = lines.Next(session.LongestLine());
        if (!line) return false;
        SmtpStep step = session.Take(line->text, line->isCut);
        if (step.mail) step = session.OnMailHandled(true);
        if (!step.reply.empty() && !step.reply.ends_with("\r\n")) std::abort();
        return !step.isOver;
    });
}

void RunModemLines(TextView input) {
    constexpr std::size_t kPiece = 7;
    ModemLines modem("Port", {});
    modem.BeginReading();
    modem.Expect({"OK\r", "ERROR\r", "+CMS ERROR", ""});
    for (std::size_t at = 0; at < input.size(); at += kPiece) {
        const TextView piece = input.substr(at, kPiece);
        if (modem.Take(piece, {}).consumed != piece.size()) std::abort();
    }
    modem.TakeMessageMark();
}

void RunSms(TextView input) {
    SmsSettings settings{};
    settings.UseSenderAsIDCode = true;
    settings.IA5toISOLatin1 = true;
    settings.cleaning.AdjustTabAndSpace = true;
    for (const int stand : {9, 32, 255}) {
        settings.SMSCrLfReplaceCharacter = stand;
        DecodeSms(input, settings, {});
    }
    IsSmsComplete(input);
    CallerNumber(input, settings);
    CountryCode(input);
}

const char* const kMail =
    "From: =?utf-8?Q?J=C3=B6rgen?= <j@b>\r\nTo: a\r\nSubject: Larm\r\n =?iso-8859-1?B?5Q==?=\r\n"
    "Content-Type: multipart/mixed; boundary=\"o\"\r\n\r\n--o\r\nContent-Type: "
    "text/html\r\n\r\n<b>\r\n--o\r\n"
    "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n"
    "1234 Br=C3=A5nd=\r\n hall\r\n--o--\r\n";

}  // namespace

std::vector<FuzzTarget> TalkTargets() {
    return {
        {"mail",
         &RunMail,
         {kMail, "Subject: a\r\nContent-Transfer-Encoding: base64\r\n\r\nMTIzNCBMYXJt\r\n",
          "Content-Type: text/plain; charset=iso-8859-15\r\n\r\n1234 \xA4 =E5 =?iso-8859-1?Q?x?=\r\n"}},
        {"pop3",
         &RunPop3,
         {"+OK\r\n+OK\r\n+OK\r\n+OK 2\r\n1 120\r\n2 80\r\n.\r\n+OK\r\nSubject: "
          "a\r\n\r\n..x\r\n.\r\n+OK\r\n-ERR\r\n+OK\r\n",
          "+OK\r\n-ERR\r\n+OK\r\n"}},
        {"smtp",
         &RunSmtp,
         {"EHLO me\r\nMAIL FROM:<a@b> SIZE=9\r\nRCPT TO:<c>\r\nDATA\r\nSubject: "
          "a\r\n\r\n..1\r\n.\r\nRSET\r\nVRFY x\r\n"
          "NOOP\r\nQUIT\r\n"}},
        {"modemlines",
         &RunModemLines,
         {"\r\nRING\r\n+CLIP: \"0701\",129,\"\"\r\n+CMTI: \"SM\",1\r\nAT\r\r\nOK\r\n"}},
        {"sms",
         &RunSms,
         {"AT+CMGR=1\r\r\n+CMGR: \"REC UNREAD\",\"+4670\",,\"24/05/17,13:45:30+08\"\r\n1234 "
          "Larm\r\nhall\r\n\r\nOK\r\n",
          "+CLIP: \"0701234567\",129,\"\",,\"\",0"}},
    };
}

}  // namespace nordkeep
