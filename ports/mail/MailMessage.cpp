#include "ports/mail/MailMessage.h"

#include "platform/MailReader.h"
#include "ports/formats/TelegramFields.h"
#include "ports/mail/HtmlText.h"
#include "ports/mail/MailText.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextMail = 1156;
constexpr int kTextDropped = 1157;

constexpr std::size_t kShownOfValue = 200;

/// Cuts the next line off the front, without its end.
TextView TakeLine(TextView& text) {
    const std::size_t end = text.find(bytes::LF);
    TextView line = text.substr(0, end);
    text.remove_prefix(end == TextView::npos ? text.size() : end + 1);
    while (line.ends_with(bytes::CR)) line.remove_suffix(1);
    return line;
}

TextView TrimLineEnds(TextView text) {
    const std::size_t start = std::min(text.find_first_not_of("\r\n"), text.size());
    text.remove_prefix(start);
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

/// True for text that can be nothing but UTF-8: it has such letters, and none that is wrong.
bool IsUtf8(TextView bytes) {
    const bool hasLetters =
        std::ranges::any_of(bytes, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return hasLetters && Utf8FromCharset(bytes, "UTF-8") == bytes;
}

/// UTF-8 of a body; one that does not say its character set is that, or as in the files of the centre.
std::string BodyAsUtf8(const MailParts& mail) {
    constexpr TextView kMark = "\xEF\xBB\xBF";
    const bool isMarked = mail.body.starts_with(kMark);
    if (isMarked || (mail.charset.empty() && IsUtf8(mail.body)))
        return mail.body.substr(isMarked ? kMark.size() : 0);
    return ToUtf8(FromCharset(mail.body, mail.charset).value_or(mail.body));
}

Text DecodeBody(const MailParts& mail) {
    Text text = FromUtf8(mail.isHtml ? TextOfHtml(BodyAsUtf8(mail)) : BodyAsUtf8(mail));
    text = TrimLineEnds(text);
    // Decoded once only.
    return mail.wasEncoded || mail.isHtml ? text : DecodeLooseWords(text);
}

/// One line of text, whatever an encoded word has hidden in it.
Text HeaderValue(const Text& value) {
    Text decoded = DecodeLooseWords(DecodeHeaderWords(IsUtf8(value) ? FromUtf8(value) : value));
    std::ranges::replace_if(
        decoded, [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    return decoded;
}

bool PassesFilter(const Text& subject, const Text& filter) {
    bool hasPattern = false;
    for (const Text& item : Split(filter, ',')) {
        const TextView pattern = TrimBlanks(item);
        if (pattern.empty()) continue;
        if (MatchesWildcard(subject, pattern)) return true;
        hasPattern = true;
    }
    return !hasPattern;
}

DecoderNote DroppedNote(const MailMessage& mail, const MailSettings& settings) {
    return {kTextDropped, mail.from.substr(0, kShownOfValue) + settings.toText +
                              mail.to.substr(0, kShownOfValue) + settings.subjectText +
                              mail.subject.substr(0, kShownOfValue)};
}

const std::array kRows = {
    kNumericCodeRow<MailSettings>,
    SettingRow<MailSettings>{"General", "SubjectFilter", SettingScope::Port, &MailSettings::SubjectFilter},
    SettingRow<MailSettings>{"General", "MailParsingRule", SettingScope::Port,
                             &MailSettings::MailParsingRule},
};

}  // namespace

std::span<const SettingRow<MailSettings>> MailSettingRows() {
    return kRows;
}

MailMessage ReadMail(TextView bytes) {
    const MailParts mail = TakeMailApart(bytes);
    return {.from = HeaderValue(mail.from),
            .to = HeaderValue(mail.to),
            .subject = HeaderValue(mail.subject),
            .body = DecodeBody(mail)};
}

TelegramStep HandleMailMessage(TextView bytes, TextView envelopeSender, const MailSettings& settings,
                               OleDate now) {
    MailMessage mail = ReadMail(bytes);
    if (!PassesFilter(mail.subject, settings.SubjectFilter)) {
        return {.notes = {DroppedNote(mail, settings)}};
    }
    TextView body = mail.body;
    const TextView line = TakeLine(body);
    CodeAndText parts{{}, Text(line)};
    if (settings.ParseNumericIDCodeFieldUsingSpace) parts = SplitNumber(TrimBlanksAndTabs(line));
    if (parts.code.empty()) parts.text = line;
    IncomingEvent event{.AlarmTime = now,
                        .DefaultAlarmCode = std::move(parts.code),
                        .ExtraText = std::move(parts.text),
                        .Originator = mail.from.empty() ? Text(envelopeSender) : mail.from,
                        .ObjectID = mail.subject,
                        .TranslationNumberToUse = Protocol::MAIL};
    return {.events = {{.event = std::move(event), .labelTexts = {kTextMail}}}};
}

}  // namespace nordkeep
