#include "ports/formats/MailMessage.h"

#include "ports/formats/MailText.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextMail = 1156;
constexpr int kTextDropped = 1157;

constexpr int kDeepestPart = 8;
constexpr std::size_t kShownOfValue = 200;

/// The header fields that count, as they stand.
struct Headers {
    Text from{};
    Text to{};
    Text subject{};
    Text contentType{};
    Text transferEncoding{};
};

constexpr std::array<std::pair<TextView, Text Headers::*>, 5> kFields = {
    {{"FROM", &Headers::from},
     {"TO", &Headers::to},
     {"SUBJECT", &Headers::subject},
     {"CONTENT-TYPE", &Headers::contentType},
     {"CONTENT-TRANSFER-ENCODING", &Headers::transferEncoding}}};

Text Headers::*FieldOf(TextView name) {
    const Text upper = UpperCase(TrimBlanksAndTabs(name));
    for (const auto& [known, field] : kFields) {
        if (upper == known) return field;
    }
    return nullptr;
}

/// Cuts the next line off the front, without its end.
TextView TakeLine(TextView& text) {
    const std::size_t end = text.find(bytes::LF);
    TextView line = text.substr(0, end);
    text.remove_prefix(end == TextView::npos ? text.size() : end + 1);
    while (line.ends_with(bytes::CR)) line.remove_suffix(1);
    return line;
}

/// Collects the fields; the first occurrence that is not empty counts.
class HeaderReader {
 public:
    void Take(TextView line) {
        if (line.front() == ' ' || line.front() == '\t') {
            if (field_) value_ += ' ' + Text(TrimBlanksAndTabs(line));
            return;
        }
        Settle();
        const std::size_t colon = line.find(':');
        field_ = colon == TextView::npos ? nullptr : FieldOf(line.substr(0, colon));
        if (field_) value_ = line.substr(colon + 1);
    }

    Headers Result() {
        Settle();
        return std::move(headers_);
    }

 private:
    void Settle() {
        if (field_ && (headers_.*field_).empty()) headers_.*field_ = TrimBlanksAndTabs(value_);
        field_ = nullptr;
    }

    Headers headers_{};
    Text Headers::*field_ = nullptr;
    Text value_{};
};

/// Takes the header off the front of a mail or of one of its parts.
Headers TakeHeaders(TextView& text) {
    HeaderReader reader;
    while (!text.empty()) {
        const TextView line = TakeLine(text);
        if (line.empty()) break;
        reader.Take(line);
    }
    return reader.Result();
}

Text MediaType(const Headers& headers) {
    const Text type =
        UpperCase(TrimBlanksAndTabs(headers.contentType.substr(0, headers.contentType.find(';'))));
    return type.empty() ? "TEXT/PLAIN" : type;
}

/// A parameter of a content type: name=value or name="value".
Text Parameter(const Headers& headers, TextView name) {
    const Text& type = headers.contentType;
    const Text wanted = Text(name) + "=";
    for (std::size_t at = FindNoCase(type, wanted); at != Text::npos; at = FindNoCase(type, wanted, at + 1)) {
        if (at == 0 || TextView("; \t").find(type[at - 1]) == TextView::npos) continue;
        const TextView value = TextView(type).substr(at + wanted.size());
        if (value.starts_with('"')) return Text(value.substr(1, value.find('"', 1) - 1));
        return Text(value.substr(0, value.find_first_of("; \t")));
    }
    return {};
}

struct Part {
    Headers headers{};
    TextView body{};
};

/// Cuts the next part of several off the front; everything up to the first boundary is no part.
std::optional<TextView> TakePart(TextView& rest, const Text& boundary) {
    const Text mark = "--" + boundary;
    const char* const begin = rest.data();
    while (!rest.empty()) {
        const TextView line = TakeLine(rest);
        if (!line.starts_with(mark)) continue;
        const TextView tail = TrimBlanksAndTabs(line.substr(mark.size()));
        if (!tail.empty() && tail != "--") continue;
        const auto length = static_cast<std::size_t>(line.data() - begin);
        if (tail == "--") rest = {};
        return TextView(begin, length);
    }
    if (rest.data() == begin) return std::nullopt;
    return TextView(begin, static_cast<std::size_t>(rest.data() - begin));
}

/// The first part whose type begins so, looked for in depth.
std::optional<Part> FindPart(TextView text, TextView type, int deepest) {
    Part part;
    part.headers = TakeHeaders(text);
    part.body = text;
    const Text own = MediaType(part.headers);
    const Text boundary = own.starts_with("MULTIPART/") ? Parameter(part.headers, "boundary") : Text();
    if (boundary.empty() || deepest == 0) return own.starts_with(type) ? std::optional(part) : std::nullopt;
    TextView rest = text;
    TakePart(rest, boundary);
    while (const auto inner = TakePart(rest, boundary)) {
        if (auto found = FindPart(*inner, type, deepest - 1)) return found;
    }
    return std::nullopt;
}

TextView TrimLineEnds(TextView text) {
    const std::size_t start = std::min(text.find_first_not_of("\r\n"), text.size());
    text.remove_prefix(start);
    return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

Text DecodeBody(const Part& part) {
    const Text encoding = UpperCase(part.headers.transferEncoding);
    const Text charset = Parameter(part.headers, "charset");
    const auto convert = [&](const Text& text) { return FromCharset(text, charset).value_or(text); };
    const bool isBase64 = encoding == "BASE64";
    if (isBase64) return Text(TrimLineEnds(convert(DecodeBase64(part.body))));
    const bool isQuoted = encoding == "QUOTED-PRINTABLE";
    const Text trimmed(TrimLineEnds(part.body));
    // Decoded once only, and before the letters are put together from their bytes.
    if (isQuoted) return convert(DecodeHexPairs(WithoutSoftBreaks(trimmed)));
    return DecodeLooseWords(convert(trimmed));
}

/// One line of text, whatever an encoded word has hidden in it.
Text HeaderValue(const Text& value) {
    Text decoded = DecodeLooseWords(DecodeHeaderWords(value));
    std::ranges::replace_if(
        decoded, [](char c) { return static_cast<unsigned char>(c) < 32; }, ' ');
    return decoded;
}

Part TextPart(TextView bytes) {
    if (const auto plain = FindPart(bytes, "TEXT/PLAIN", kDeepestPart)) return *plain;
    if (const auto text = FindPart(bytes, "TEXT/", kDeepestPart)) return *text;
    Part whole;
    whole.headers = TakeHeaders(bytes);
    if (!MediaType(whole.headers).starts_with("MULTIPART/")) whole.body = bytes;
    return whole;
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
    TextView rest = bytes;
    const Headers headers = TakeHeaders(rest);
    return {.from = HeaderValue(headers.from),
            .to = HeaderValue(headers.to),
            .subject = HeaderValue(headers.subject),
            .body = DecodeBody(TextPart(bytes))};
}

TelegramStep HandleMailMessage(TextView bytes, TextView envelopeSender, const MailSettings& settings,
                               OleDate now) {
    MailMessage mail = ReadMail(bytes);
    if (!PassesFilter(mail.subject, settings.SubjectFilter)) {
        return {.notes = {DroppedNote(mail, settings)}};
    }
    TextView body = mail.body;
    const TextView line = TakeLine(body);
    CodeAndText parts =
        settings.ParseNumericIDCodeFieldUsingSpace ? SplitNumber(line) : CodeAndText{{}, Text(line)};
    IncomingEvent event{.AlarmTime = now,
                        .DefaultAlarmCode = std::move(parts.code),
                        .ExtraText = std::move(parts.text),
                        .Originator = mail.from.empty() ? Text(envelopeSender) : mail.from,
                        .ObjectID = mail.subject,
                        .TranslationNumberToUse = Protocol::MAIL};
    return {.events = {{.event = std::move(event), .labelTexts = {kTextMail}}}};
}

}  // namespace nordkeep
