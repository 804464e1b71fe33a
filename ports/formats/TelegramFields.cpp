#include "ports/formats/TelegramFields.h"

#include "runtime/Fields.h"

#include <climits>

namespace nordkeep {
unsigned char ByteAt(TextView telegram, std::size_t position) {
    if (position < 1 || position > telegram.size()) return 0;
    return static_cast<unsigned char>(telegram[position - 1]);
}

TextView Between(TextView telegram, std::size_t first, std::size_t last) {
    if (first < 1 || first > telegram.size() || last < first) return {};
    return telegram.substr(first - 1, last - first + 1);
}

OleDate TelegramDate(CivilTime time, OleDate otherwise) {
    time.year += time.year < 50 ? 2000 : 1900;
    const OleDate date = OleDate::FromCivil(time);
    return date.Civil() == time ? date : otherwise;
}

TelegramStep SkipToStart(TextView received, TextView startBytes) {
    for (std::size_t i = 0; i < received.size(); ++i) {
        if (startBytes.find(received[i]) != TextView::npos) return {.consumed = i};
        if (received[i] == bytes::BEL)
            return {.consumed = i + 1, .reply = Text(1, bytes::ACK), .isTraffic = true};
    }
    return {.consumed = received.size()};
}

CodeAndText SplitCode(TextView message, bool isAnyWordACode) {
    const std::size_t blank = message.find(' ');
    const TextView word = message.substr(0, blank);
    if (!IsNumeric(word) && !isAnyWordACode) return {.text = Text(message)};
    return {Text(word), Text(blank == TextView::npos ? TextView() : message.substr(blank + 1))};
}

CodeAndText SplitNumber(TextView message) {
    const std::size_t end = message.find_first_not_of("0123456789");
    if (end == 0 || end == TextView::npos || message[end] != ' ') return {{}, Text(message)};
    return {Text(message.substr(0, end)), Text(TrimBlanks(message.substr(end)))};
}

int HexToLong(TextView text) {
    std::int64_t number = 0;
    for (const char c : text) {
        const int digit = HexDigit(c);
        if (digit < 0) break;
        number = number * 16 + digit;
        if (number > INT_MAX) return INT_MAX;
    }
    return static_cast<int>(number);
}

Text HexToBytes(TextView text) {
    Text decoded;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = HexDigit(text[i]);
        const int low = HexDigit(text[i + 1]);
        if (high < 0 || low < 0) break;
        decoded += static_cast<char>(high * 16 + low);
    }
    return decoded;
}

Text BytesToHex(TextView bytes) {
    constexpr TextView kDigits = "0123456789ABCDEF";
    Text digits;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        digits += kDigits[byte >> 4];
        digits += kDigits[byte & 15];
    }
    return digits;
}

}  // namespace nordkeep
