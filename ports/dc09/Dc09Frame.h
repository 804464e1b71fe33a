#pragma once

#include "ports/formats/TelegramStep.h"

#include <optional>

namespace nordkeep {

/// How a sender writes the check of its frames, and how it is answered.
enum class Dc09Check { Digits, Binary };

/// What stands at the front of the received text of a line of format "SIA DC-09".
struct Dc09Frame {
    std::size_t consumed = 0;  // 0: wait for more
    bool isWhole = false;      // else what is consumed is noise
    bool isWrong = false;      // a frame whose length or check is not right; nobody is answered
    Dc09Check check = Dc09Check::Digits;
    std::uint16_t sum = 0;
    TextView content{};  // from the first quote up to the carriage return
};

/// Cuts the frame at the front: LF, check, length, content, CR.
Dc09Frame CutDc09Frame(TextView received);
/// A frame with this content.
Text MakeDc09Frame(TextView content, Dc09Check check);

/// The head of a message: `"SIA-DCS"0002R1L232#78919[`.
struct Dc09Head {
    Text kind{};  // without quotes and star
    bool isEncrypted = false;
    Text sequence{};  // four digits
    Text receiver{};  // hexadecimal digits; empty: not given
    Text prefix{};    // hexadecimal digits; empty: not given
    Text account{};
    TextView rest{};  // behind the bracket
};

/// None for what does not keep to the form.
std::optional<Dc09Head> ReadDc09Head(TextView content);
/// The head as it stands in a message, from the quote up to and including the bracket.
Text Dc09HeadText(const Dc09Head& head);

/// An account has up to this many letters and digits.
inline constexpr std::size_t kLongestDc09Account = 16;
bool IsDc09Account(TextView text);

}  // namespace nordkeep
