#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// The bytes of a base64 text. What is none of its characters is skipped; padding ends it.
Text DecodeBase64(TextView text);
/// Each "=" with two hexadecimal digits becomes its character; any other "=" stays.
Text DecodeHexPairs(TextView text);
/// Windows-1252 of a text in this character set; none for a set that is not known.
std::optional<Text> FromCharset(TextView bytes, TextView charset);
/// The encoded words =?charset?Q?..?= and =?charset?B?..?= of a header value; words of an unknown character
/// set stay as they are.
Text DecodeHeaderWords(TextView value);
/// Hexadecimal pairs, and the marks of encoded words in iso-8859-1 taken out, wherever they stand.
Text DecodeLooseWords(TextView text);
/// "*" is any run of characters and "?" one; case does not count.
bool MatchesWildcard(TextView text, TextView pattern);

}  // namespace nordkeep
