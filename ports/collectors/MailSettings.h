#pragma once

#include "ports/lines/PortLog.h"
#include "ports/mail/MailMessage.h"
#include "runtime/SettingTable.h"

namespace nordkeep {

/// How a port fetches mail.
struct Pop3Settings {
    int POP3Interval = 30'000;  // ms between sessions
    Text POP3User{};
    Text POP3Password{};
    int POP3MaxMessages = 10;            // of one session
    int POP3ConnectionTimeout = 15'000;  // ms that a session may last
    Text POP3TLS{};                      // blank: by the number of the port
    Text POP3CAFile{};                   // certificates that are trusted besides the system's
};

/// How a port takes mail in.
struct SmtpSettings {
    Text SMTPWelcomeMessage{};
};

std::span<const SettingRow<Pop3Settings>> Pop3SettingRows();
std::span<const SettingRow<SmtpSettings>> SmtpSettingRows();

/// How the mails of a port become events, with the texts of its log lines.
MailSettings LoadMailSettings(const Settings& files, const Language& language, const Text& portName);
/// One log line when the parsing rule is none that the system has; rule 0 is used then.
void WarnOfParsingRule(PortLog& log, const MailSettings& settings);

/// True when the connection is to be encrypted from its first byte on.
bool IsTlsWanted(const Pop3Settings& settings, int portNumber);

}  // namespace nordkeep
