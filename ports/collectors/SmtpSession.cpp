#include "ports/collectors/SmtpSession.h"

#include "runtime/Fields.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kMostRecipients = 100;
constexpr int kMostErrors = 20;

constexpr const char* kOk = "250 OK\r\n";
constexpr const char* kSyntax = "500 Not understood\r\n";
constexpr const char* kOrder = "503 Not now\r\n";
constexpr const char* kTooLarge = "552 The mail is too large\r\n";

/// An address and what follows it: "<a@b> SIZE=9", or without the brackets.
struct Path {
    Text address{};
    TextView parameters{};
};

/// The path behind "FROM:" or "TO:".
std::optional<Path> PathBehind(TextView argument, TextView word) {
    if (!EqualsNoCase(argument.substr(0, word.size()), word)) return std::nullopt;
    TextView rest = TrimBlanks(argument.substr(word.size()));
    if (rest.starts_with('<')) {
        const std::size_t end = rest.find('>');
        if (end == TextView::npos) return std::nullopt;
        return Path{Text(rest.substr(1, end - 1)), rest.substr(end + 1)};
    }
    if (rest.empty()) return std::nullopt;
    const std::size_t end = std::min(rest.find(' '), rest.size());
    return Path{Text(rest.substr(0, end)), rest.substr(end)};
}

bool IsTooLarge(TextView parameters) {
    const std::size_t at = FindNoCase(parameters, " SIZE=");
    if (at == TextView::npos) return false;
    return LeadingNumber(parameters.substr(at + 6)) > static_cast<std::int64_t>(SmtpSession::kMostOfMail);
}

}  // namespace

const SmtpSession::Verb SmtpSession::kVerbs[] = {
    {"HELO", &SmtpSession::Hello},     {"EHLO", &SmtpSession::ExtendedHello}, {"MAIL", &SmtpSession::Mail},
    {"RCPT", &SmtpSession::Recipient}, {"DATA", &SmtpSession::Data},          {"RSET", &SmtpSession::Reset},
    {"NOOP", &SmtpSession::Nothing},   {"VRFY", &SmtpSession::Verify},
};

Text SmtpSession::Greeting(const Text& welcome) {
    const Text text = welcome.empty() ? "Nordkeep" : welcome;
    return (text.starts_with("220") ? text : "220 " + text) + "\r\n";
}

Text SmtpSession::Farewell(TextView reason) {
    return "421 " + Text(reason) + "\r\n";
}

SmtpStep SmtpSession::Take(const Text& line, bool isCut) {
    if (isTakingData_) return TakeDataLine(line, isCut);
    if (isCut) return Counted("500 The line is too long\r\n");
    if (EqualsNoCase(TrimBlanks(line), "QUIT")) return {.reply = "221 Bye\r\n", .isOver = true};
    return Counted(Answer(line));
}

SmtpStep SmtpSession::Counted(Text reply) {
    if (reply.starts_with('5') && ++errors_ >= kMostErrors) {
        return {.reply = Farewell("Too many errors"), .isOver = true};
    }
    return {.reply = std::move(reply)};
}

Text SmtpSession::Answer(const Text& line) {
    const TextView trimmed = TrimBlanksAndTabs(line);
    const std::size_t end = std::min(trimmed.find(' '), trimmed.size());
    const TextView word = trimmed.substr(0, end);
    if (word.empty()) return kSyntax;
    for (const Verb& verb : kVerbs) {
        if (EqualsNoCase(word, verb.name)) return (this->*verb.answer)(TrimBlanks(trimmed.substr(end)));
    }
    return "502 Not known here\r\n";
}

Text SmtpSession::Hello(TextView) {
    Reset({});
    return "250 Nordkeep\r\n";
}

Text SmtpSession::ExtendedHello(TextView) {
    Reset({});
    return "250-Nordkeep\r\n250-SIZE " + std::to_string(kMostOfMail) + "\r\n250 8BITMIME\r\n";
}

Text SmtpSession::Mail(TextView argument) {
    if (mail_) return kOrder;
    auto path = PathBehind(argument, "FROM:");
    if (!path) return kSyntax;
    if (IsTooLarge(path->parameters)) return kTooLarge;
    mail_ = SmtpMail{.sender = std::move(path->address)};
    return kOk;
}

Text SmtpSession::Recipient(TextView argument) {
    if (!mail_) return kOrder;
    if (!PathBehind(argument, "TO:")) return kSyntax;
    if (recipients_ >= kMostRecipients) return "452 Too many recipients\r\n";
    ++recipients_;
    return kOk;
}

Text SmtpSession::Data(TextView) {
    if (!mail_ || recipients_ == 0) return kOrder;
    isTakingData_ = true;
    isTooLarge_ = false;
    return "354 Go on, a line with a dot ends the mail\r\n";
}

Text SmtpSession::Reset(TextView) {
    mail_.reset();
    recipients_ = 0;
    isTakingData_ = false;
    return kOk;
}

Text SmtpSession::Nothing(TextView) {
    return kOk;
}

Text SmtpSession::Verify(TextView) {
    return "252 Mail for any address is taken\r\n";
}

SmtpStep SmtpSession::TakeDataLine(const Text& line, bool isCut) {
    if (line == ".") {
        isTakingData_ = false;
        if (!isTooLarge_) return {.mail = std::move(mail_)};
        Reset({});
        return Counted(kTooLarge);
    }
    // The caller doubles a dot in front of a line.
    const TextView content = TextView(line).substr(line.starts_with('.') ? 1 : 0);
    Text& taken = mail_->content;
    isTooLarge_ = isTooLarge_ || isCut || taken.size() + content.size() + 2 > kMostOfMail;
    if (isTooLarge_) {
        Text().swap(taken);
    } else {
        taken.append(content).append("\r\n");
    }
    return {};
}

SmtpStep SmtpSession::OnMailHandled(bool isStored) {
    Reset({});
    return {.reply = isStored ? kOk : "451 The mail cannot be stored now\r\n"};
}

}  // namespace nordkeep
