#include "tools/Telegrams.h"

#include "platform/Text.h"
#include "ports/dc09/Dc09Body.h"
#include "ports/dc09/Dc09Frame.h"
#include "ports/formats/Crc16.h"
#include "ports/formats/Robofon.h"
#include "runtime/Fields.h"

#include <cctype>
#include <ctime>

namespace nordkeep::tools {
namespace {

std::string TimeDigits() {
    const std::time_t now = std::time(nullptr);
    char digits[16];
    std::tm local{};
    localtime_r(&now, &local);
    return {digits, std::strftime(digits, sizeof digits, "%y%m%d%H%M", &local)};
}

std::string Robofon(const TelegramOptions& options, const std::string& code) {
    // A short telegram carries the first eight characters of its code where a full one has the time.
    const bool isShort = options.kind == 'T' && options.classCode != '5';
    const std::string first = isShort ? code.substr(0, 8) : TimeDigits();
    const std::string id = !isShort ? code : code.size() > 8 ? code.substr(8) : "";
    const int status =
        (options.receiver & 7) << 4 | (options.isFollowedBySpeech ? 8 : 0) | (options.line & 7);
    std::string telegram = EncodeRobofon({.kind = options.kind,
                                          .timeOrFirstPart = first,
                                          .status = static_cast<char>(status),
                                          .classCode = options.classCode,
                                          .id = id});
    if (options.hasWrongCheck) telegram.back() = static_cast<char>(telegram.back() ^ 0x55);
    return telegram;
}

std::string WithText(const TelegramOptions& options, const std::string& code) {
    return options.text.empty() ? code : code + " " + options.text;
}

std::string PlainText(const TelegramOptions& options, const std::string& code) {
    const std::string message = WithText(options, code);
    return options.isUnwrapped ? message + "\n" : '\x02' + message + '\x03';
}

/// Year, month, day, hour, minute and second, a byte each.
std::string TimeBytes() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    std::string bytes;
    for (const int number :
         {local.tm_year % 100, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec}) {
        bytes += static_cast<char>(number);
    }
    return bytes;
}

char Spoiled(char check, const TelegramOptions& options) {
    return options.hasWrongCheck ? static_cast<char>(check ^ 0x55) : check;
}

std::string Googol(const TelegramOptions& options, const std::string& code) {
    constexpr char kEventKind = '0';
    constexpr char kSmsClass = 33;
    const std::string text = WithText(options, code);
    std::string frame = std::string("\x01") + kEventKind + static_cast<char>(options.sequence) + '\0' + '\0';
    frame += static_cast<char>(11 + text.size());
    frame +=
        TimeBytes() + std::string(3, '\0') + kSmsClass + (options.isFollowedBySpeech ? '\1' : '\0') + text;
    const unsigned check = CRC16(frame);
    return frame + static_cast<char>(check >> 8) + Spoiled(static_cast<char>(check & 0xFF), options);
}

std::string Rsm02(const TelegramOptions& options, const std::string& code) {
    constexpr char kWholeText = 0x30;  // first and last fragment
    std::string body = std::string(2, '\0') + static_cast<char>(15 + code.size()) + 'P';
    body += TimeBytes().substr(0, 5) + static_cast<char>(options.line) + options.classCode;
    body += static_cast<char>(kWholeText | (options.isFollowedBySpeech ? 1 : 0));
    body += '\0' + code;
    unsigned sum = 0;
    for (const char c : body) sum += static_cast<unsigned char>(c);
    return '\x02' + body + static_cast<char>(sum >> 8) + Spoiled(static_cast<char>(sum & 0xFF), options) +
           '\x03';
}

std::string SurGardSia(const TelegramOptions& options, const std::string& code) {
    const std::string blocks = options.text.empty() ? "Nri1BA01" : options.text;
    return "S011[#" + code + "|" + blocks + "]\x14";
}

std::string SurGardContactID(const TelegramOptions&, const std::string& code) {
    return "5011 18" + code + "\x14";
}

std::string Element(const std::string& name, const std::string& value) {
    return "<" + name + ">" + value + "</" + name + ">";
}

std::string SosAccess(const TelegramOptions& options, const std::string& code) {
    return Element("AlarmRequest", Element("Reference", "1") + Element("Authentication", "nordkeep-send") +
                                       Element("TransmitterCode", code) +
                                       Element("EventCode", options.text.empty() ? "BA" : options.text));
}

std::string LarmTelegram(const std::string& id, const std::string& information) {
    return Element("LarmTelegram", Element("Anvandare", "nordkeep-send") + Element("Losen", "none") +
                                       Element("LarmTyp", "1") + Element("LarmId", id) +
                                       Element("TillaggsInfo", information));
}

/// An element with nothing in it would block the line.
std::string TextOr(const TelegramOptions& options, const char* otherwise) {
    return options.text.empty() ? otherwise : options.text;
}

std::string SosAccessMini(const TelegramOptions& options, const std::string& code) {
    return LarmTelegram(code, TextOr(options, "Test"));
}

std::string AptusMini(const TelegramOptions& options, const std::string& code) {
    return LarmTelegram(TextOr(options, "1"), code);
}

std::string UtcStamp(int clockSeconds) {
    const std::time_t now = std::time(nullptr) + clockSeconds;
    std::tm utc{};
    gmtime_r(&now, &utc);
    return Dc09TimeStamp(OleDate::FromCivil(
        {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec}));
}

/// A message of this kind; `data` stands behind the account, and a link test has none.
std::string Dc09(const TelegramOptions& options, const char* kind, const std::string& account,
                 const std::string& data) {
    Dc09Head head;
    head.kind = kind;
    head.isEncrypted = !options.key.empty();
    head.sequence = Digits((options.sequence + options.number) % 10000, 4);
    head.receiver = std::to_string(options.receiver);
    head.prefix = std::to_string(options.line);
    head.account = account;
    std::string text = data.empty() ? "]" : "#" + account + "|" + data + "]";
    text += options.extended;
    // Without its time nobody could tell that an encrypted message is not an old one.
    if (!options.hasNoTime) text += UtcStamp(options.clockSeconds);
    std::string frame =
        MakeDc09Frame(Dc09HeadText(head) + (options.key.empty() ? text : EncipherDc09(text, options.key)),
                      options.hasBinaryCheck ? Dc09Check::Binary : Dc09Check::Digits);
    if (options.hasWrongCheck) frame[1] = Spoiled(frame[1], options);
    return frame;
}

std::string Dc09Sia(const TelegramOptions& options, const std::string& code) {
    return Dc09(options, "SIA-DCS", code, TextOr(options, "Nri1/BA01"));
}

std::string Dc09ContactId(const TelegramOptions& options, const std::string& code) {
    return Dc09(options, "ADM-CID", code, TextOr(options, "1130 01 001"));
}

std::string Dc09LinkTest(const TelegramOptions& options, const std::string& code) {
    return Dc09(options, "NULL", code, {});
}

struct FormatRow {
    const char* name;
    std::string (*make)(const TelegramOptions&, const std::string&);
    const char* acknowledgement;  // found in an answer that says the event is stored; none: no answer comes
    bool closesBehindReply;
};

constexpr FormatRow kFormats[] = {
    {"robofon", &Robofon, "\x06", false},
    {"text", &PlainText, nullptr, false},
    {"googol", &Googol, "\x06", false},
    {"rsm02", &Rsm02, "\x06", false},
    {"sia", &SurGardSia, "\x06", false},
    {"contactid", &SurGardContactID, "\x06", false},
    {"sosaccess", &SosAccess, "<status>0</status>", true},
    {"sosmini", &SosAccessMini, "<status>0</status>", true},
    {"aptus", &AptusMini, "<status>0</status>", true},
    {"dc09", &Dc09Sia, "ACK\"", false},
    {"dc09cid", &Dc09ContactId, "ACK\"", false},
    {"dc09null", &Dc09LinkTest, "ACK\"", false},
};

const FormatRow* FindFormat(const std::string& name) {
    for (const FormatRow& row : kFormats) {
        if (name == row.name) return &row;
    }
    return nullptr;
}

}  // namespace

std::string FormatNames() {
    std::string names;
    for (const FormatRow& row : kFormats) names += (names.empty() ? "" : " ") + std::string(row.name);
    return names;
}

std::string MakeTelegram(const TelegramOptions& options, const std::string& code) {
    const FormatRow* format = FindFormat(options.format);
    return format ? format->make(options, code) : std::string();
}

bool HasReply(const std::string& format) {
    const FormatRow* row = FindFormat(format);
    return row && row->acknowledgement;
}

bool IsAcknowledged(const std::string& format, const std::string& reply) {
    return HasReply(format) && reply.find(FindFormat(format)->acknowledgement) != std::string::npos;
}

bool ClosesBehindReply(const std::string& format) {
    const FormatRow* row = FindFormat(format);
    return row && row->closesBehindReply;
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
