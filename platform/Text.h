#pragma once

#include <string>
#include <string_view>

namespace nordkeep {

/// A text of the logic: bytes in Windows-1252, one for each character; NUL is an ordinary character.
/// Files, lines and the wire carry these bytes as they are. Conversion to and from Unicode happens only
/// at the screen and at file names.
using Text = std::string;
using TextView = std::string_view;

/// Upper case by one fixed Windows-1252 table; the length never changes and no locale is asked.
/// Sharp s, micro sign and the ordinal signs stay.
char UpperCase(char character);
Text UpperCase(TextView text);

/// Comparison without regard to case, by the table of UpperCase.
bool EqualsNoCase(TextView a, TextView b);
/// Below, equal to or above 0 as strcmp; the order of the upper-cased bytes taken as unsigned.
int CompareNoCase(TextView a, TextView b);
/// Place of the first `part` at or behind `from`, without regard to case; npos when there is none.
std::size_t FindNoCase(TextView text, TextView part, std::size_t from = 0);

/// Cuts blanks (character 32 only) at both ends.
TextView TrimBlanks(TextView text);
TextView TrimBlanksLeft(TextView text);
/// Cuts blanks and tabs at both ends.
TextView TrimBlanksAndTabs(TextView text);

/// UTF-8 of a Windows-1252 text. The five undefined bytes become U+0081, U+008D, U+008F, U+0090, U+009D.
std::string ToUtf8(TextView text);
/// Windows-1252 of a UTF-8 text; what has no place there, and every invalid byte, becomes `unmappable`.
Text FromUtf8(std::string_view utf8, char unmappable = '?');

/// The Unicode code point of a Windows-1252 character.
char32_t ToUnicode(char character);

}  // namespace nordkeep
