#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/ObjectForm.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextNoPhone = 5118;
constexpr int kTextNoMail = 5119;
constexpr int kTextNoDate = 5120;
constexpr int kTextNoChoice = 5121;
constexpr std::size_t kFewestDigits = 5;  // of a number that stands somewhere in a text
constexpr std::size_t kLikelyDigits = 7;  // behind so many another number may begin
constexpr std::size_t kMostDigits = 15;   // of any number of the world
constexpr TextView kBetweenDigits = " -/().";

bool IsDate(TextView text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
    return IsNumeric(text.substr(0, 4)) && IsNumeric(text.substr(5, 2)) && IsNumeric(text.substr(8)) &&
           ParseDateTime(Text(text).append(" 00:00:00")).has_value();
}

bool IsMail(TextView text) {
    const std::size_t at = text.find('@');
    return at != TextView::npos && at > 0 && at + 1 < text.size() &&
           text.find('@', at + 1) == TextView::npos && text.find_first_of(" \t,;<>\"") == TextView::npos;
}

/// The digits of a telephone number, with "+" in front where it has one; empty when it is none.
std::string DigitsOf(TextView text) {
    std::string digits;
    for (const char c : TrimBlanksAndTabs(text)) {
        if (IsDigit(c) || (c == '+' && digits.empty())) {
            digits += c;
        } else if (kBetweenDigits.find(c) == TextView::npos) {
            return {};
        }
    }
    const std::size_t count = digits.size() - (digits.starts_with('+') ? 1 : 0);
    return count >= 2 && count <= kMostDigits ? digits : std::string();
}

/// UTF-8 in which only letters, digits and few signs stand for themselves.
std::string Percent(TextView text) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string made;
    for (const char c : ToUtf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                             std::string_view("-._~@").find(c) != std::string_view::npos;
        if (isPlain) {
            made += c;
        } else {
            made += '%';
            made += kHex[byte / 16];
            made += kHex[byte % 16];
        }
    }
    return made;
}

/// The end of what begins like a telephone number at `from`, and how many digits it has.
std::pair<std::size_t, std::size_t> EndOfNumber(TextView line, std::size_t from) {
    std::size_t end = from;
    std::size_t digits = 0;
    for (std::size_t at = from; at < line.size(); ++at) {
        if (IsDigit(line[at])) {
            if (digits >= kLikelyDigits && at > end && (line[at] == '0' || line[at - 1] == '+')) break;
            ++digits;
            end = at + 1;
        } else if (!(at == from && line[at] == '+') && kBetweenDigits.find(line[at]) == TextView::npos) {
            break;
        }
    }
    return {end, digits};
}

bool IsOfWord(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return IsDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || byte >= 0xC0;
}

bool LooksLikeATime(TextView number) {
    return number.find('-') != TextView::npos && IsDate(number.substr(0, 10));
}

void AddNumbersOf(TextView line, std::vector<PhoneNumber>& numbers) {
    std::size_t behind = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        const bool isInWord = at > 0 && IsOfWord(line[at - 1]);
        if (isInWord || !(line[at] == '+' || line[at] == '0')) continue;
        const auto [end, digits] = EndOfNumber(line, at);
        if (digits < kFewestDigits || digits > kMostDigits) continue;
        const TextView number = line.substr(at, end - at);
        if (LooksLikeATime(number)) continue;
        TextView who = TrimBlanksAndTabs(line.substr(behind, at - behind));
        while (!who.empty() && TextView(":=,;-(").find(who.back()) != TextView::npos)
            who = TrimBlanksAndTabs(who.substr(0, who.size() - 1));
        while (!who.empty() && TextView(",;").find(who.front()) != TextView::npos)
            who = TrimBlanksAndTabs(who.substr(1));
        numbers.push_back({Text(who), Text(number)});
        at = end - 1;
        behind = end;
    }
}

}  // namespace

int FaultOfFormValue(const FormField& field, TextView typed) {
    const TextView value = TrimBlanksAndTabs(typed);
    if (value.empty()) return 0;
    switch (field.kind) {
        case FormKind::Phone:
            return DigitsOf(value).empty() ? kTextNoPhone : 0;
        case FormKind::Mail:
            return IsMail(value) ? 0 : kTextNoMail;
        case FormKind::Date:
            return IsDate(value) ? 0 : kTextNoDate;
        case FormKind::Choice:
            return std::ranges::count(field.choices, value) > 0 ? 0 : kTextNoChoice;
        default:
            return 0;
    }
}

std::string LinkOf(FormKind kind, TextView typed) {
    const TextView value = TrimBlanksAndTabs(typed);
    if (kind == FormKind::Phone) {
        const std::string digits = DigitsOf(value);
        return digits.empty() ? std::string() : "tel:" + digits;
    }
    if (kind == FormKind::Mail) return IsMail(value) ? "mailto:" + Percent(value) : std::string();
    return kind == FormKind::Address && !value.empty() ? "geo:0,0?q=" + Percent(value) : std::string();
}

std::vector<PhoneNumber> PhoneNumbersIn(TextView text) {
    std::vector<PhoneNumber> numbers;
    for (const TextView line : Lines(text)) AddNumbersOf(line, numbers);
    return numbers;
}

}  // namespace nordkeep
