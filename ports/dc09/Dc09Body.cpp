#include "ports/dc09/Dc09Body.h"

#include "platform/AesCbc.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"

#include <array>
#include <cstdlib>

namespace nordkeep {
namespace {

constexpr TextView kTimePicture = "_00:00:00,00-00-0000";
constexpr char kFiller = '0';
// An alarm's link and two coordinates; what more a sender writes is not looked at.
constexpr int kMostExtended = 16;
constexpr int kMinutesOfDegree = 60;

bool FitsPicture(TextView text, TextView picture) {
    if (text.size() != picture.size()) return false;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const bool isDigitWanted = picture[i] == '0';
        if (isDigitWanted ? !IsDigit(text[i]) : text[i] != picture[i]) return false;
    }
    return true;
}

/// The time in "_HH:MM:SS,MM-DD-YYYY" at the end of a text.
std::optional<OleDate> TimeAtEnd(TextView text) {
    if (text.size() < kTimePicture.size()) return std::nullopt;
    const TextView stamp = text.substr(text.size() - kTimePicture.size());
    if (!FitsPicture(stamp, kTimePicture)) return std::nullopt;
    const auto number = [&](std::size_t at, std::size_t width) {
        return LeadingInt32(stamp.substr(at, width));
    };
    const CivilTime time{number(16, 4), number(10, 2), number(13, 2),
                         number(1, 2),  number(4, 2),  number(7, 2)};
    const OleDate date = OleDate::FromCivil(time);
    if (date.Civil() != time) return std::nullopt;
    return date;
}

/// Takes "012" and "34.1" of "012W34.1" as ten-thousandths of a minute; none for anything else.
std::optional<std::int64_t> TakeAngle(TextView text, TextView letters, int mostDegrees) {
    const std::size_t at = text.find_first_of(letters);
    if (at == TextView::npos || !IsNumeric(text.substr(0, at)) || at > 3) return std::nullopt;
    const TextView minutes = text.substr(at + 1);
    const TextView whole = minutes.substr(0, minutes.find('.'));
    const TextView part = minutes.size() > whole.size() ? minutes.substr(whole.size() + 1, 4) : TextView();
    if (!IsNumeric(whole) || whole.size() > 2 || (!part.empty() && !IsNumeric(part))) return std::nullopt;
    const std::int64_t fine = LeadingNumber(Text(part) + Text(4 - part.size(), '0'));
    const std::int64_t all =
        (LeadingNumber(text.substr(0, at)) * kMinutesOfDegree + LeadingNumber(whole)) * 10'000 + fine;
    if (LeadingNumber(whole) >= kMinutesOfDegree || all > mostDegrees * kMinutesOfDegree * 10'000LL)
        return std::nullopt;
    return text[at] == letters.back() ? -all : all;
}

/// Ten-thousandths of a minute as degrees with five digits.
Text Degrees(std::int64_t angle) {
    // 60 * 10,000 of them are a degree of 100,000 parts; half a part more rounds.
    const std::int64_t parts = (std::abs(angle) + 3) / 6;
    return (angle < 0 && parts > 0 ? "-" : "") + std::to_string(parts / 100'000) + "." +
           Digits(parts % 100'000, 5);
}

struct Extended {
    Text link{};
    Text longitude{};
    Text latitude{};
};

Text LinkOf(const Extended& extended) {
    if (!extended.link.empty()) return extended.link;
    const auto latitude = TakeAngle(extended.latitude, "NS", 90);
    const auto longitude = TakeAngle(extended.longitude, "EW", 180);
    return latitude && longitude ? "geo:" + Degrees(*latitude) + "," + Degrees(*longitude) : Text();
}

/// The parts "[X012W34.1][Y045N12.2]" behind the data.
Extended ReadExtended(TextView rest) {
    Extended extended;
    for (int i = 0; i < kMostExtended && rest.starts_with('['); ++i) {
        const std::size_t end = rest.find(']');
        if (end == TextView::npos) break;
        const char letter = UpperCase(rest[1]);
        Text value(TrimBlanks(rest.substr(2, end > 2 ? end - 2 : 0)));
        if (letter == 'V' && extended.link.empty())
            extended.link = std::move(value);
        else if (letter == 'X')
            extended.longitude = std::move(value);
        else if (letter == 'Y')
            extended.latitude = std::move(value);
        rest.remove_prefix(end + 1);
    }
    return extended;
}

/// The data without the padding that an encrypted message has in front of its first bar.
TextView WithoutPadding(TextView data) {
    const std::size_t bar = data.find('|');
    if (bar == TextView::npos) return data;
    const TextView behind = data.substr(bar + 1);
    const bool beginsBehind = behind.starts_with('#') || !data.starts_with('#');
    return beginsBehind ? behind : data;
}

}  // namespace

Dc09Body ReadDc09Body(TextView text) {
    Dc09Body body;
    const std::size_t end = std::min(text.find(']'), text.size());
    body.data = text.substr(0, end);
    const TextView behind = text.substr(std::min(end + 1, text.size()));
    body.link = LinkOf(ReadExtended(behind));
    body.sentAt = TimeAtEnd(behind);
    return body;
}

std::optional<Text> DecipherDc09(TextView digits, TextView key) {
    if (digits.ends_with(']')) digits.remove_suffix(1);
    const Text cipher = HexToBytes(digits);
    if (cipher.empty() || cipher.size() * 2 != digits.size()) return std::nullopt;
    const Text plain = AesCbcDecrypt(key, cipher);
    // Only the right key brings the time of sending to light at the end; some senders leave it away.
    const std::size_t end = plain.find(']');
    if (end == Text::npos) return std::nullopt;
    const TextView data = WithoutPadding(TextView(plain).substr(0, end));
    const bool isData = data.starts_with('#') && plain.ends_with(']');
    if (!isData && !TimeAtEnd(TextView(plain).substr(end + 1))) return std::nullopt;
    return Text(data) + plain.substr(end);
}

Text EncipherDc09(TextView plain, TextView key) {
    const bool hasData = !plain.starts_with(']');
    const std::size_t size = plain.size() + (hasData ? 1 : 0);
    Text padded((kAesBlock - size % kAesBlock) % kAesBlock, kFiller);
    if (hasData) padded += '|';
    return BytesToHex(AesCbcEncrypt(key, padded.append(plain)));
}

Text Dc09TimeStamp(OleDate utc) {
    const CivilTime time = utc.Civil();
    return "_" + Digits(time.hour, 2) + ":" + Digits(time.minute, 2) + ":" + Digits(time.second, 2) + "," +
           Digits(time.month, 2) + "-" + Digits(time.day, 2) + "-" + Digits(time.year, 4);
}

}  // namespace nordkeep
