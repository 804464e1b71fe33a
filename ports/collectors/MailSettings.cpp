#include "ports/collectors/MailSettings.h"

#include <array>

namespace nordkeep {
namespace {

constexpr SettingScope kPort = SettingScope::Port;
constexpr const char* kGeneral = "General";
constexpr int kTextTo = 1158;
constexpr int kTextSubject = 1159;
constexpr int kTextUnknownRule = 3630;
constexpr int kLongestMs = 2'000'000'000;

const std::array kPop3 = {
    SettingRow<Pop3Settings>{kGeneral, "POP3Interval", kPort, &Pop3Settings::POP3Interval, 0, kLongestMs},
    SettingRow<Pop3Settings>{kGeneral, "POP3User", kPort, &Pop3Settings::POP3User},
    SettingRow<Pop3Settings>{kGeneral, "POP3Password", kPort, &Pop3Settings::POP3Password},
    SettingRow<Pop3Settings>{kGeneral, "POP3MaxMessages", kPort, &Pop3Settings::POP3MaxMessages, 0, 10'000},
    SettingRow<Pop3Settings>{kGeneral, "POP3ConnectionTimeout", kPort, &Pop3Settings::POP3ConnectionTimeout,
                             0, kLongestMs},
    SettingRow<Pop3Settings>{kGeneral, "POP3TLS", kPort, &Pop3Settings::POP3TLS},
    SettingRow<Pop3Settings>{kGeneral, "POP3CAFile", kPort, &Pop3Settings::POP3CAFile},
};

const std::array kSmtp = {
    SettingRow<SmtpSettings>{kGeneral, "SMTPWelcomeMessage", kPort, &SmtpSettings::SMTPWelcomeMessage},
};

}  // namespace

std::span<const SettingRow<Pop3Settings>> Pop3SettingRows() {
    return kPop3;
}

std::span<const SettingRow<SmtpSettings>> SmtpSettingRows() {
    return kSmtp;
}

MailSettings LoadMailSettings(const Settings& files, const Language& language, const Text& portName) {
    MailSettings settings = LoadSettings(files, MailSettingRows(), portName);
    settings.toText = language.GetLanguageText(kTextTo);
    settings.subjectText = language.GetLanguageText(kTextSubject);
    return settings;
}

void WarnOfParsingRule(PortLog& log, const MailSettings& settings) {
    if (settings.MailParsingRule == 0) return;
    log.Failure(kTextUnknownRule,
                log.Name() + " (MailParsingRule=" + std::to_string(settings.MailParsingRule) + ")");
}

bool IsTlsWanted(const Pop3Settings& settings, int portNumber) {
    constexpr int kSecurePort = 995;
    if (TrimBlanks(settings.POP3TLS).empty()) return portNumber == kSecurePort;
    return IsTrue(settings.POP3TLS);
}

}  // namespace nordkeep
