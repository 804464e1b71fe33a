#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <vector>

namespace nordkeep {

/// One of 0 to 9.
constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
/// The value of a hexadecimal digit in either case; below 0 for any other character.
constexpr int HexDigit(char c) {
    if (IsDigit(c)) return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Field `number` (from 0) of a text that `delimiter` separates; empty when there are too few fields.
/// Of a delimiter longer than one character only the first character is skipped, so its tail starts the
/// next field. With an empty delimiter field 0 is the whole text.
Text GetField(TextView text, std::size_t number, TextView delimiter);

/// The whole number at the front of a text: blanks and tabs, one sign, digits. 0 when there is none; a
/// fraction is dropped, and numbers beyond the range stop at its end.
std::int64_t LeadingNumber(TextView text);
/// As LeadingNumber, stopping at the ends of 16 and 32 bits.
int LeadingInt16(TextView text);
int LeadingInt32(TextView text);
/// A boolean of a settings file: any number but 0, so "-1" is true and "yes" is not.
bool IsTrue(TextView text);
/// One or more of the digits 0 to 9 and nothing else.
bool IsNumeric(TextView text);

/// Characters from `start` (counted from 1), at most `length`. Empty when start is below 1 or length below 1;
/// behind the end it is what is left.
TextView Substring(TextView text, long start, long length);
/// Decimal digits, filled with zeros in front to at least `width`.
Text Digits(std::int64_t number, int width);
/// All places of `from` (not empty) replaced; what was inserted is not looked at again.
Text ReplaceAll(TextView text, TextView from, TextView to);
/// The pieces between the separators; one empty piece for an empty text.
std::vector<Text> Split(TextView text, char separator);
/// The lines of a text file: they end in CR LF, LF or CR, and a last line without an end counts.
std::vector<TextView> Lines(TextView text);
/// The code without its leading zeros when `isOn`; "0" for a code of zeros only. A view of `code` or a
/// constant.
TextView ZeroTrimCode(TextView code, bool isOn);
/// Cut, or filled with blanks behind, to exactly `width` characters.
Text FitWidth(TextView text, std::size_t width);

}  // namespace nordkeep
