#include "runtime/Fields.h"

#include <algorithm>
#include <limits>

namespace nordkeep {
namespace {

int Saturated(std::int64_t number, std::int64_t low, std::int64_t high) {
    return static_cast<int>(std::clamp(number, low, high));
}

}  // namespace

Text GetField(TextView text, std::size_t number, TextView delimiter) {
    if (delimiter.empty()) return number == 0 ? Text(text) : Text();
    std::size_t start = 0;
    std::size_t end = text.find(delimiter);
    while (number >= 1 && end != TextView::npos) {
        start = end + 1;
        end = text.find(delimiter, start);
        --number;
    }
    if (number != 0) return {};
    return Text(text.substr(start, end == TextView::npos ? end : end - start));
}

std::int64_t LeadingNumber(TextView text) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    std::size_t at = text.find_first_not_of(" \t");
    if (at == TextView::npos) return 0;
    const bool isNegative = text[at] == '-';
    if (isNegative || text[at] == '+') ++at;
    std::int64_t number = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        const int digit = text[at] - '0';
        number = number > (kMost - digit) / 10 ? kMost : number * 10 + digit;
    }
    return isNegative ? -number : number;
}

int LeadingInt16(TextView text) {
    return Saturated(LeadingNumber(text), -32768, 32767);
}

int LeadingInt32(TextView text) {
    return Saturated(LeadingNumber(text), std::numeric_limits<std::int32_t>::min(),
                     std::numeric_limits<std::int32_t>::max());
}

bool IsTrue(TextView text) {
    return LeadingNumber(text) != 0;
}

bool IsNumeric(TextView text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

TextView Substring(TextView text, long start, long length) {
    if (start < 1 || length < 1 || static_cast<std::size_t>(start) > text.size()) return {};
    return text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length));
}

Text Digits(std::int64_t number, int width) {
    Text digits = std::to_string(number < 0 ? -number : number);
    if (digits.size() < static_cast<std::size_t>(width)) {
        digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
    }
    return number < 0 ? "-" + digits : digits;
}

Text ReplaceAll(TextView text, TextView from, TextView to) {
    Text result;
    std::size_t at = 0;
    for (std::size_t found = text.find(from); found != TextView::npos; found = text.find(from, at)) {
        result.append(text.substr(at, found - at)).append(to);
        at = found + from.size();
    }
    return result.append(text.substr(at));
}

std::vector<Text> Split(TextView text, char separator) {
    std::vector<Text> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == TextView::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::vector<TextView> Lines(TextView text) {
    std::vector<TextView> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        lines.push_back(text.substr(0, end));
        if (end == TextView::npos) break;
        const bool isPair = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        text.remove_prefix(end + (isPair ? 2 : 1));
    }
    return lines;
}

TextView ZeroTrimCode(TextView code, bool isOn) {
    if (!isOn || code.empty()) return code;
    const std::size_t first = code.find_first_not_of('0');
    return first == TextView::npos ? TextView("0") : code.substr(first);
}

Text FitWidth(TextView text, std::size_t width) {
    Text fitted(text.substr(0, width));
    fitted.resize(width, ' ');
    return fitted;
}

}  // namespace nordkeep
