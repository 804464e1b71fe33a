#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// What stands behind the bracket of a message, in plain text: `#1234|Nri1/BA01][Vlink]_14:12:04,09-25-2026`.
struct Dc09Body {
    Text data{};                      // without padding and bracket
    Text link{};                      // of the place or the picture; empty for none
    std::optional<OleDate> sentAt{};  // UTC
};

Dc09Body ReadDc09Body(TextView text);

/// The plain text of an encrypted part; none when the key is not the one that it was made with.
std::optional<Text> DecipherDc09(TextView digits, TextView key);
/// The hexadecimal digits of a plain text that begins with its data, filled up in front to whole blocks.
Text EncipherDc09(TextView plain, TextView key);

/// "_14:12:04,09-25-2026"
Text Dc09TimeStamp(OleDate utc);

}  // namespace nordkeep
