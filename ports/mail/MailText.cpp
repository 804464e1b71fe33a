#include "ports/mail/MailText.h"

#include "platform/MailReader.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <array>
#include <utility>

namespace nordkeep {
namespace {

/// The character that "=" and two digits at this place stand for.
std::optional<char> HexPairAt(TextView text, std::size_t at) {
    if (at + 2 >= text.size() || text[at] != '=') return std::nullopt;
    const int high = HexDigit(text[at + 1]);
    const int low = HexDigit(text[at + 2]);
    if (high < 0 || low < 0) return std::nullopt;
    return static_cast<char>(high * 16 + low);
}

int Base64Value(char c) {
    if (c >= 'A' && c <= 'Z') return c - 'A';
    if (c >= 'a' && c <= 'z') return c - 'a' + 26;
    if (c >= '0' && c <= '9') return c - '0' + 52;
    if (c == '+') return 62;
    return c == '/' ? 63 : -1;
}

/// Where iso-8859-15 differs from Windows-1252.
constexpr std::array<std::pair<unsigned char, unsigned char>, 8> kLatin9 = {{{0xA4, 0x80},
                                                                             {0xA6, 0x8A},
                                                                             {0xA8, 0x9A},
                                                                             {0xB4, 0x8E},
                                                                             {0xB8, 0x9E},
                                                                             {0xBC, 0x8C},
                                                                             {0xBD, 0x9C},
                                                                             {0xBE, 0x9F}}};

Text FromLatin9(TextView bytes) {
    Text text(bytes);
    for (char& c : text) {
        for (const auto& [from, to] : kLatin9) {
            if (static_cast<unsigned char>(c) != from) continue;
            c = static_cast<char>(to);
            break;
        }
    }
    return text;
}

/// One encoded word.
struct Word {
    TextView charset;
    Text bytes;
    std::size_t end;
};

Text WordBytes(TextView text, bool isBase64) {
    if (isBase64) return DecodeBase64(text);
    Text blanks(text);
    std::replace(blanks.begin(), blanks.end(), '_', ' ');
    return DecodeHexPairs(blanks);
}

/// The word at this place. Each search ends at the next question mark, so a value full of beginnings costs no
/// more than its length.
std::optional<Word> WordAt(TextView value, std::size_t at) {
    if (value.substr(at, 2) != "=?") return std::nullopt;
    const std::size_t charsetEnd = value.find('?', at + 2);
    if (charsetEnd == TextView::npos || charsetEnd + 2 >= value.size()) return std::nullopt;
    const char encoding = UpperCase(value[charsetEnd + 1]);
    if ((encoding != 'Q' && encoding != 'B') || value[charsetEnd + 2] != '?') return std::nullopt;
    const std::size_t start = charsetEnd + 3;
    const std::size_t end = value.find_first_of("? ", start);
    if (end == TextView::npos || value.substr(end, 2) != "?=") return std::nullopt;
    const TextView charset = value.substr(at + 2, charsetEnd - at - 2);
    return Word{charset.substr(0, charset.find('*')),  // a language may follow
                WordBytes(value.substr(start, end - start), encoding == 'B'), end + 2};
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

}  // namespace

Text DecodeBase64(TextView text) {
    Text bytes;
    unsigned group = 0;
    int bits = 0;
    for (const char c : text) {
        if (c == '=') break;
        const int value = Base64Value(c);
        if (value < 0) continue;
        group = (group << 6 | static_cast<unsigned>(value)) & 0xFFFF;
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes += static_cast<char>(group >> bits & 0xFF);
    }
    return bytes;
}

Text DecodeHexPairs(TextView text) {
    Text decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto character = HexPairAt(text, i);
        decoded += character.value_or(text[i]);
        if (character) i += 2;
    }
    return decoded;
}

std::optional<Text> FromCharset(TextView bytes, TextView charset) {
    const Text name = UpperCase(charset);
    if (name == "UTF-8" || name == "UTF8") return FromUtf8(bytes);
    if (name == "ISO-8859-15") return FromLatin9(bytes);
    if (name == "US-ASCII" || name == "ISO-8859-1" || name == "WINDOWS-1252") return Text(bytes);
    const auto utf8 = Utf8FromCharset(bytes, charset);
    return utf8 ? std::optional(FromUtf8(*utf8)) : std::nullopt;
}

Text DecodeHeaderWords(TextView value) {
    Text decoded;
    Text bytes;  // of adjacent words in one character set: a letter may be cut in two
    TextView charset;
    const auto flush = [&] {
        if (bytes.empty()) return;
        decoded += FromCharset(bytes, charset).value_or("");
        bytes.clear();
    };
    for (std::size_t i = 0; i < value.size();) {
        std::size_t start = i;
        // Blanks between two words are no part of the text.
        while (!bytes.empty() && start < value.size() && IsBlank(value[start])) ++start;
        const auto word = WordAt(value, start);
        const bool isKnown = word && FromCharset("", word->charset);
        if (!isKnown || word->charset != charset) flush();
        if (isKnown) {
            charset = word->charset;
            bytes += word->bytes;
        } else {
            decoded += value.substr(i, (word ? word->end : start + 1) - i);
        }
        i = word ? word->end : start + 1;
    }
    flush();
    return decoded;
}

Text DecodeLooseWords(TextView text) {
    constexpr TextView kMark = "=?iso-8859-1?Q?";
    Text decoded;
    bool isInside = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '=' && EqualsNoCase(text.substr(i, kMark.size()), kMark)) {
            isInside = true;
            i += kMark.size() - 1;
        } else if (isInside && text.substr(i, 2) == "?=") {
            isInside = false;
            ++i;
        } else {
            const auto character = HexPairAt(text, i);
            decoded += character.value_or(text[i]);
            if (character) i += 2;
        }
    }
    return decoded;
}

bool MatchesWildcard(TextView text, TextView pattern) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::size_t star = TextView::npos;  // the last run, and where the text behind it is tried
    std::size_t tried = 0;
    while (at < text.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            tried = at;
        } else if (in < pattern.size() &&
                   (pattern[in] == '?' || UpperCase(pattern[in]) == UpperCase(text[at]))) {
            ++in;
            ++at;
        } else if (star != TextView::npos) {
            in = star + 1;
            at = ++tried;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == TextView::npos;
}

}  // namespace nordkeep
