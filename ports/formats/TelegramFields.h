#pragma once

#include "ports/formats/TelegramStep.h"

namespace nordkeep {

/// The byte at a position counted from 1; 0 outside the telegram.
unsigned char ByteAt(TextView telegram, std::size_t position);
/// The bytes of two positions counted from 1, both included; what lies outside the telegram is left away.
TextView Between(TextView telegram, std::size_t first, std::size_t last);

/// The date of a telegram whose year has two digits: below 50 it is 20xx, else 19xx. `otherwise` when the
/// numbers are no date.
OleDate TelegramDate(CivilTime time, OleDate otherwise);

/// Drops what stands in front of the next start byte, up to and including the first BEL, which is a line
/// test and answered with ACK.
TelegramStep SkipToStart(TextView received, TextView startBytes);

struct CodeAndText {
    Text code{};
    Text text{};
};
/// The first word is the code when it is numeric, or when any word may be one; what follows its blank is the
/// text. Otherwise all is text.
CodeAndText SplitCode(TextView message, bool isAnyWordACode);

/// The digits in front are the code when a blank follows them, and the rest is the text. Otherwise all is
/// text.
CodeAndText SplitNumber(TextView message);

/// The number that the leading hexadecimal digits make; 0 without one, and stopping at 2^31 - 1.
int HexToLong(TextView text);
/// The bytes of the leading pairs of hexadecimal digits.
Text HexToBytes(TextView text);
/// Two hexadecimal digits, in capitals, for each byte.
Text BytesToHex(TextView bytes);

}  // namespace nordkeep
