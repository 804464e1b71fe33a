#pragma once

#include "ports/formats/TelegramStep.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

/// What a mail says: decoded header values, and the text of its body.
struct MailMessage {
    Text from{};
    Text to{};
    Text subject{};
    Text body{};
};

/// Reads a whole mail, line ends and all. Without an empty line everything is header and the body is empty;
/// of a mail of several parts the first plain text counts.
MailMessage ReadMail(TextView bytes);

/// How mails become events.
struct MailSettings : NumericCodeSettings {
    Text SubjectFilter{"*"};  // patterns separated by commas; none: every subject passes
    int MailParsingRule = 0;
    Text toText{};  // for the log line about a dropped mail
    Text subjectText{};
};
std::span<const SettingRow<MailSettings>> MailSettingRows();

/// The event of a mail, or the log line that tells why there is none. `envelopeSender` stands in for a sender
/// that the mail itself does not name.
TelegramStep HandleMailMessage(TextView bytes, TextView envelopeSender, const MailSettings& settings,
                               OleDate now);

}  // namespace nordkeep
