#include "ports/dc09/Dc09Frame.h"

#include "ports/formats/Crc16.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr char kQuote = '"';
constexpr TextView kEnds = "\r\n";

// LF, the check as four digits or two bytes, the length as "0" and three hexadecimal digits.
constexpr std::size_t kLengthDigits = 4;
constexpr std::size_t kDigitHead = 1 + 4 + kLengthDigits;
constexpr std::size_t kBinaryHead = 1 + 2 + kLengthDigits;
constexpr std::size_t kLongestSequence = 4;
constexpr std::size_t kLongestNumber = 6;
constexpr std::size_t kLongestKind = 16;

bool IsHex(TextView text) {
    return !text.empty() && std::ranges::all_of(text, [](char c) { return HexDigit(c) >= 0; });
}

bool IsAccountCharacter(char c) {
    return IsDigit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// How the frame at the front begins; none when it is no frame.
std::optional<Dc09Check> CheckOf(TextView received) {
    const auto isHead = [&](std::size_t size) {
        if (received.size() <= size || received[size] != kQuote) return false;
        const TextView length = received.substr(size - kLengthDigits, kLengthDigits);
        return length.front() == '0' && IsHex(length);
    };
    if (isHead(kBinaryHead)) return Dc09Check::Binary;
    if (isHead(kDigitHead) && IsHex(received.substr(1, 4))) return Dc09Check::Digits;
    return std::nullopt;
}

std::uint16_t SumIn(TextView received, Dc09Check check) {
    if (check == Dc09Check::Digits) return static_cast<std::uint16_t>(HexToLong(received.substr(1, 4)));
    return static_cast<std::uint16_t>(ByteAt(received, 2) * 256 + ByteAt(received, 3));
}

/// Behind the byte in front: up to the next one that may begin a frame.
Dc09Frame Noise(TextView received) {
    return {.consumed = std::min(received.find(bytes::LF, 1), received.size())};
}

/// Takes a letter and the hexadecimal digits behind it; nothing when the letter is another.
Text TakeNumber(TextView& rest, char letter) {
    if (!rest.starts_with(letter)) return {};
    std::size_t end = 1;
    while (end < rest.size() && end <= kLongestNumber && HexDigit(rest[end]) >= 0) ++end;
    Text number(rest.substr(1, end - 1));
    rest.remove_prefix(end);
    return number;
}

/// Takes what stands between two quotes.
std::optional<Text> TakeKind(TextView& rest) {
    const std::size_t end = rest.find(kQuote, 1);
    if (!rest.starts_with(kQuote) || end == TextView::npos || end > kLongestKind) return std::nullopt;
    Text kind(rest.substr(1, end - 1));
    rest.remove_prefix(end + 1);
    return kind;
}

}  // namespace

Dc09Frame CutDc09Frame(TextView received) {
    if (received.empty()) return {};
    if (received.front() != bytes::LF) return Noise(received);
    const auto check = CheckOf(received);
    if (!check) return received.size() > kDigitHead ? Noise(received) : Dc09Frame{};
    const std::size_t head = *check == Dc09Check::Binary ? kBinaryHead : kDigitHead;
    // A frame has no line end inside, so one that says a wrong length does not swallow the next.
    const std::size_t end = received.find_first_of(kEnds, head);
    const auto length = static_cast<std::size_t>(HexToLong(received.substr(head - 3, 3)));
    if (end == TextView::npos && received.size() <= head + length) return {};
    Dc09Frame frame{.isWrong = true, .check = *check, .sum = SumIn(received, *check)};
    const bool isEnded = end != TextView::npos && received[end] == bytes::CR;
    frame.consumed = end == TextView::npos ? received.size() : end + (isEnded ? 1 : 0);
    if (!isEnded || end != head + length) return frame;
    frame.content = received.substr(head, length);
    frame.isWhole = CRC16(frame.content) == frame.sum;
    frame.isWrong = !frame.isWhole;
    return frame;
}

Text MakeDc09Frame(TextView content, Dc09Check check) {
    const unsigned sum = CRC16(content);
    const Text binary{static_cast<char>(sum >> 8), static_cast<char>(sum & 255)};
    Text frame(1, bytes::LF);
    const Text length{static_cast<char>(content.size() >> 8), static_cast<char>(content.size() & 255)};
    frame += check == Dc09Check::Binary ? binary : BytesToHex(binary);
    frame += BytesToHex(length);
    return frame.append(content) += bytes::CR;
}

std::optional<Dc09Head> ReadDc09Head(TextView content) {
    Dc09Head head;
    TextView rest = content;
    auto kind = TakeKind(rest);
    if (!kind) return std::nullopt;
    head.isEncrypted = kind->starts_with('*');
    head.kind = kind->substr(head.isEncrypted ? 1 : 0);
    head.sequence = rest.substr(0, kLongestSequence);
    if (head.sequence.size() != kLongestSequence || !IsNumeric(head.sequence)) return std::nullopt;
    rest.remove_prefix(kLongestSequence);
    head.receiver = TakeNumber(rest, 'R');
    head.prefix = TakeNumber(rest, 'L');
    const std::size_t bracket = rest.find('[');
    if (bracket == TextView::npos) return std::nullopt;
    if (rest.starts_with('#')) head.account = rest.substr(1, bracket - 1);
    head.rest = rest.substr(bracket + 1);
    if (!IsDc09Account(head.account)) return std::nullopt;
    return head;
}

Text Dc09HeadText(const Dc09Head& head) {
    const auto number = [](char letter, const Text& digits) {
        return digits.empty() ? Text() : letter + digits;
    };
    return kQuote + Text(head.isEncrypted ? "*" : "") + head.kind + kQuote + head.sequence +
           number('R', head.receiver) + number('L', head.prefix) + "#" + head.account + "[";
}

bool IsDc09Account(TextView text) {
    return !text.empty() && text.size() <= kLongestDc09Account &&
           std::ranges::all_of(text, IsAccountCharacter);
}

}  // namespace nordkeep
