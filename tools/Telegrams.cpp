#include "tools/Telegrams.h"

#include "platform/Text.h"

#include <cctype>
#include <ctime>

namespace nordkeep::tools {
namespace {

std::string Padded(const std::string& text, std::size_t width) {
    std::string padded = text.substr(0, width);
    padded.resize(width, ' ');
    return padded;
}

std::string TimeDigits() {
    const std::time_t now = std::time(nullptr);
    char digits[16];
    std::tm local{};
    localtime_r(&now, &local);
    return {digits, std::strftime(digits, sizeof digits, "%y%m%d%H%M", &local)};
}

char Xor(const std::string& bytes) {
    char sum = 0;
    for (const char c : bytes) sum = static_cast<char>(sum ^ c);
    return sum;
}

std::string Robofon(const TelegramOptions& options, const std::string& code) {
    // A short telegram carries the first eight characters of its code where a full one has the time.
    const bool isShort = options.kind == 'T' && options.classCode != '5';
    const std::string first = isShort ? Padded(code, 8) + "  " : TimeDigits();
    const std::string id = isShort ? Padded(code.size() > 8 ? code.substr(8) : "", 8) : Padded(code, 8);
    const int status =
        (options.receiver & 7) << 4 | (options.isFollowedBySpeech ? 8 : 0) | (options.line & 7);
    std::string body =
        std::string("  ") + options.kind + first + static_cast<char>(status) + options.classCode;
    body += id + '\x03';
    char check = Xor(body);
    if (options.hasWrongCheck) check = static_cast<char>(check ^ 0x55);
    return '\x02' + body + check;
}

std::string PlainText(const TelegramOptions& options, const std::string& code) {
    const std::string message = options.text.empty() ? code : code + " " + options.text;
    return options.isUnwrapped ? message + "\n" : '\x02' + message + '\x03';
}

}  // namespace

std::string MakeTelegram(const TelegramOptions& options, const std::string& code) {
    if (options.format == "robofon") return Robofon(options, code);
    if (options.format == "text") return PlainText(options, code);
    return {};
}

bool HasReply(const std::string& format) {
    return format != "text";
}

std::string Readable(const std::string& bytes) {
    static const char* const kNames[32] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                                           "BS",  "TAB", "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                                           "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                                           "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += byte < 32 ? "<" + std::string(kNames[byte]) + ">" : ToUtf8(std::string_view(&c, 1));
    }
    return text;
}

std::string FromHex(const std::string& text) {
    std::string bytes;
    int high = -1;
    for (const char c : text) {
        if (c == ' ') continue;
        if (!std::isxdigit(static_cast<unsigned char>(c))) break;
        const int digit = std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : (c | 32) - 'a' + 10;
        if (high < 0) {
            high = digit;
        } else {
            bytes += static_cast<char>(high * 16 + digit);
            high = -1;
        }
    }
    return bytes;
}

}  // namespace nordkeep::tools
