#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace nordkeep {
namespace {

constexpr std::array<std::uint16_t, 32> kUnicodeOf80To9F = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned char UpperByte(unsigned char c) {
    if (c >= 'a' && c <= 'z') return static_cast<unsigned char>(c - 32);
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<unsigned char>(c - 32);
    if (c == 0xFF) return 0x9F;
    if (c == 0x9A || c == 0x9C || c == 0x9E) return static_cast<unsigned char>(c - 16);
    return c;
}

constexpr std::array<char, 256> MakeUpperTable() {
    std::array<char, 256> table{};
    for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<char>(UpperByte(static_cast<unsigned char>(i)));
    return table;
}

constexpr std::array<char, 256> kUpper = MakeUpperTable();

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

struct Decoded {
    char32_t codePoint;
    std::size_t length;
};

/// One code point at the front; an invalid sequence is one byte long and code point 0xFFFD.
Decoded DecodeUtf8(std::string_view utf8) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC2 ? 2 : 0;
    if (length == 0 || first > 0xF4 || utf8.size() < length) return {0xFFFD, 1};
    char32_t code = first & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {0xFFFD, 1};
        code = (code << 6) | (byte(i) & 0x3Fu);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[length]) return {0xFFFD, 1};
    return {code, length};
}

char ToCodePage(char32_t code, char unmappable) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<char>(code);
    const auto* found = std::find(kUnicodeOf80To9F.begin(), kUnicodeOf80To9F.end(), code);
    if (found == kUnicodeOf80To9F.end()) return unmappable;
    return static_cast<char>(0x80 + (found - kUnicodeOf80To9F.begin()));
}

}  // namespace

char UpperCase(char character) {
    return kUpper[static_cast<unsigned char>(character)];
}

Text UpperCase(TextView text) {
    Text upper(text);
    for (char& c : upper) c = UpperCase(c);
    return upper;
}

int CompareNoCase(TextView a, TextView b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto x = static_cast<unsigned char>(UpperCase(a[i]));
        const auto y = static_cast<unsigned char>(UpperCase(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool EqualsNoCase(TextView a, TextView b) {
    return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

std::size_t FindNoCase(TextView text, TextView part, std::size_t from) {
    if (from > text.size()) return TextView::npos;
    const auto same = [](char a, char b) { return UpperCase(a) == UpperCase(b); };
    const auto start = text.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found = std::search(start, text.end(), part.begin(), part.end(), same);
    if (found == text.end() && !part.empty()) return TextView::npos;
    return static_cast<std::size_t>(found - text.begin());
}

TextView TrimBlanksLeft(TextView text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == TextView::npos ? TextView{} : text.substr(first);
}

TextView TrimBlanks(TextView text) {
    text = TrimBlanksLeft(text);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

TextView TrimBlanksAndTabs(TextView text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == TextView::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

char32_t ToUnicode(char character) {
    const auto c = static_cast<unsigned char>(character);
    return c >= 0x80 && c <= 0x9F ? kUnicodeOf80To9F[c - 0x80] : c;
}

std::string ToUtf8(TextView text) {
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 128; };
    if (std::ranges::all_of(text, isPlain)) return std::string(text);
    std::string utf8;
    utf8.reserve(text.size());
    for (const char c : text) AppendUtf8(utf8, ToUnicode(c));
    return utf8;
}

Text FromUtf8(std::string_view utf8, char unmappable) {
    Text text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const Decoded next = DecodeUtf8(utf8);
        text += ToCodePage(next.codePoint, unmappable);
        utf8.remove_prefix(next.length);
    }
    return text;
}

}  // namespace nordkeep
