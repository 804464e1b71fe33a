#include "ports/formats/Sms.h"

#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextGsm = 1038;
constexpr TextView kRead = "+CMGR:";
constexpr TextView kClip = "+CLIP:";
constexpr char kLineEnd = '\xFF';
constexpr int kNational = 129;

/// Where the alphabet of text messages (GSM 03.38) differs.
constexpr std::array<std::pair<unsigned char, unsigned char>, 31> kIa5 = {
    {{0, '@'},   {1, 0xA3},  {2, '$'},    {3, 0xA5},   {4, 0xE8},   {5, 0xE9},   {6, 0xF9},  {7, 0xEC},
     {8, 0xF2},  {9, 0xC7},  {11, 0xD8},  {12, 0xF8},  {14, 0xC5},  {15, 0xE5},  {17, '_'},  {28, 0xC6},
     {29, 0xE6}, {30, 0xDF}, {31, 0xC9},  {64, 0xA1},  {91, 0xC4},  {92, 0xD6},  {93, 0xD1}, {94, 0xDC},
     {95, 0xA7}, {96, 0xBF}, {123, 0xE4}, {124, 0xF6}, {125, 0xF1}, {126, 0xFC}, {127, 0xE0}}};

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    kLineEndRow<SmsSettings>,
    kNumericCodeRow<SmsSettings>,
    SettingRow<SmsSettings>{"General", "UseSenderAsIDCode", kPort, &SmsSettings::UseSenderAsIDCode},
    SettingRow<SmsSettings>{"General", "IA5toISOLatin1", kPort, &SmsSettings::IA5toISOLatin1},
    SettingRow<SmsSettings>{"General", "DefaultCountryCode", kPort, &SmsSettings::DefaultCountryCode},
};

Text WithoutQuotes(Text text) {
    std::erase(text, '"');
    return text;
}

/// The answer with its line ends as one character each, from the header on.
Text FromHeader(TextView answer) {
    Text text = ReplaceAll(answer, "\r\n", Text(1, kLineEnd));
    std::ranges::replace_if(
        text, [](char c) { return c == '\r' || c == '\n'; }, ' ');
    const std::size_t start = text.find(kRead);
    return start == Text::npos ? text : text.substr(start);
}

/// Where the line that is exactly "OK" begins, with the line end in front of it; npos without one.
std::size_t FindOkLine(TextView text, char lineEnd) {
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(lineEnd, start), text.size());
        if (text.substr(start, end - start) == "OK") return start == 0 ? 0 : start - 1;
        start = end + 1;
    }
    return TextView::npos;
}

Text SenderOf(TextView header) {
    const Text field = ReplaceAll(WithoutQuotes(GetField(header, 1, ",")), "+", "00");
    const bool isNumber = IsNumeric(field) && field != "0" && field != "00";
    return isNumber ? field : Text();
}

Text BodyOf(TextView lines, const SmsSettings& settings) {
    constexpr char kCr = '\r';
    const char stand = CharacterOf(settings.SMSCrLfReplaceCharacter, '\t');
    Text body(TrimBlanks(lines));
    std::ranges::replace(body, kLineEnd, kCr);
    body.resize(std::min(FindOkLine(body, kCr), body.size()));
    std::ranges::replace(body, kCr, stand);
    body = TrimBlanks(AdjustBlanks(TrimBlanks(body), settings.cleaning));
    if (body.ends_with(stand)) body.pop_back();
    const bool isRemnant = body == "OK" || body == "O" || body == "K";
    return isRemnant ? Text() : body;
}

Text Letters(TextView text, const SmsSettings& settings) {
    const Text latin = settings.IA5toISOLatin1 ? Ia5ToLatin1(text) : Text(text);
    return settings.cleaning.DOS8bitASCIItoISOLatin1 ? Dos8ToLatin1(latin) : latin;
}

}  // namespace

std::span<const SettingRow<SmsSettings>> SmsSettingRows() {
    return kRows;
}

Text Ia5ToLatin1(TextView text) {
    Text latin(text);
    for (char& c : latin) {
        const auto code = static_cast<unsigned char>(c);
        const auto found = std::ranges::find(kIa5, code, &std::pair<unsigned char, unsigned char>::first);
        if (found != kIa5.end()) c = static_cast<char>(found->second);
    }
    return latin;
}

Text CountryCode(TextView setting) {
    return "00" + Text(setting.substr(std::min(setting.find_first_not_of('0'), setting.size())));
}

bool HoldsSms(TextView answer) {
    return answer.find(kRead) != TextView::npos;
}

bool IsSmsComplete(TextView answer) {
    return FindOkLine(FromHeader(answer), kLineEnd) != TextView::npos;
}

std::optional<DecodedEvent> DecodeSms(TextView answer, const SmsSettings& settings, OleDate now) {
    const Text text = FromHeader(answer);
    const std::size_t headerEnd = std::min(text.find(kLineEnd), text.size());
    const TextView lines = TextView(text).substr(std::min(headerEnd + 1, text.size()));
    const Text body = BodyOf(lines, settings);
    CodeAndText parts =
        settings.ParseNumericIDCodeFieldUsingSpace ? SplitNumber(body) : CodeAndText{{}, body};
    const Text sender = SenderOf(TrimBlanks(TextView(text).substr(0, headerEnd)));
    if (settings.UseSenderAsIDCode && !sender.empty()) parts.code = sender;
    if (body.empty() && parts.code.empty()) return std::nullopt;
    return DecodedEvent{.event = {.AlarmTime = now,
                                  .DefaultAlarmCode = Letters(parts.code, settings),
                                  .ExtraText = Letters(parts.text, settings),
                                  .Originator = sender,
                                  .TranslationNumberToUse = Protocol::SMS,
                                  .RawAlarmCode = Letters(body, settings)},
                        .labelTexts = {kTextGsm}};
}

Text CallerNumber(TextView line, const SmsSettings& settings) {
    const TextView fields = line.substr(std::min(kClip.size(), line.size()));
    Text number = WithoutQuotes(Text(TrimBlanks(GetField(fields, 0, ","))));
    const bool isNational = LeadingNumber(GetField(fields, 1, ",")) == kNational;
    if (isNational && number.starts_with('0') && !number.starts_with("00")) {
        number = CountryCode(TrimBlanks(settings.DefaultCountryCode)) + number.substr(1);
    }
    return ReplaceAll(number, "+", "00");
}

DecodedEvent CallEvent(const Text& number, OleDate now) {
    return {.event = {.AlarmTime = now, .DefaultAlarmCode = number, .TranslationNumberToUse = Protocol::SMS},
            .labelTexts = {kTextGsm}};
}

}  // namespace nordkeep
