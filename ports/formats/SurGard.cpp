#include "ports/formats/SurGard.h"

#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr const char* kSystemStart = "0000";
constexpr const char* kUnknownSystem = "Unknown system message: ";
constexpr const char* kUnknownCode = "00000000";
constexpr int kTextContactId = 2011;
constexpr int kTextRobofon = 2000;

// Positions in a message, counted from 1: family, receiver in hexadecimal, line, contents.
constexpr std::size_t kReceiverAt = 2;
constexpr std::size_t kLineAt = 4;
constexpr std::size_t kSystemCodeAt = 5;
constexpr std::size_t kSiaAt = 5;
constexpr std::size_t kMessageTypeAt = 6;
constexpr std::size_t kOtherFamilyAt = 7;
constexpr std::size_t kAccountAt = 8;
constexpr std::size_t kHeartbeatMarkAt = 16;
constexpr std::size_t kLongAccountQualifierAt = 16;
constexpr std::size_t kBehindQualifier = 8;  // event, group and zone

const std::array kRows = {
    SettingRow<SurGardSettings>{"General", "MLR2QualifierAsNumber", SettingScope::Port,
                                &SurGardSettings::MLR2QualifierAsNumber},
};

/// What the receiver says of itself. A code that ends in "?" stands for 1 to 9 and A to E; a "?" in the text
/// is that character.
struct SystemRow {
    TextView code;
    TextView text;
};

constexpr std::array<SystemRow, 22> kSystemMessages = {
    {{"A00", "Indicate Operator activity for C or ESC mode"},
     {"A01", "Printer Error"},
     {"R02", "Printer Restored"},
     {"A03", "12V Battery Low"},
     {"R04", "12V Battery Restored"},
     {"A05", "COM#1 Absent"},
     {"R06", "COM#1 Restored"},
     {"A07", "UPS AC Fail"},
     {"R08", "UPS AC Restored"},
     {"A11", "9V Batt. Low"},
     {"R12", "9V Batt. Restr"},
     {"A13", "COM#2 Absent"},
     {"R14", "COM#2 Restored"},
     {"A15", "AC Failure"},
     {"R16", "AC Restored"},
     {"A17", "UPS Low Battery"},
     {"R18", "UPS Low Batt Restr"},
     {"T19", "CPM2 Master Fail"},
     {"AC?", "Internal communication error"},
     {"AD0", "CPM2 Reset"},
     {"AF?", "Line Card ? Absent"},
     {"RE?", "Line Card ? Restored"}}};

bool IsCard(char c) {
    return (c >= '1' && c <= '9') || (c >= 'A' && c <= 'E');
}

/// The text for a system message; empty for an unknown code.
Text SystemText(const Text& code) {
    if (code.size() != 3) return {};
    for (const SystemRow& row : kSystemMessages) {
        const bool isForCards = row.code.ends_with('?');
        if (!isForCards && row.code == code) return Text(row.text);
        if (isForCards && code.starts_with(row.code.substr(0, 2)) && IsCard(code[2])) {
            return ReplaceAll(row.text, "?", TextView(code).substr(2));
        }
    }
    return {};
}

char UpperAt(TextView message, std::size_t position) {
    return UpperCase(static_cast<char>(ByteAt(message, position)));
}

Text ReceiverLine(TextView message) {
    return std::to_string(HexToLong(Between(message, kReceiverAt, kReceiverAt + 1))) + ":" +
           std::to_string(HexToLong(Between(message, kLineAt, kLineAt)));
}

TelegramStep Answered(char answer) {
    return {.reply = Text(1, answer), .isTraffic = true};
}

/// A step with one event that has what every event of a message has.
TelegramStep AnsweredEvent(char answer, TextView message, OleDate now) {
    TelegramStep step = Answered(answer);
    IncomingEvent& event = step.events.emplace_back().event;
    event.AlarmTime = now;
    event.LineCardNumber = ReceiverLine(message);
    event.RawAlarmCode = message;
    return step;
}

TelegramStep SystemStep(TextView message, OleDate now) {
    const Text text = SystemText(UpperCase(Between(message, kSystemCodeAt, kSystemCodeAt + 2)));
    TelegramStep step = AnsweredEvent(text.empty() ? bytes::NAK : bytes::ACK, message, now);
    IncomingEvent& event = step.events.front().event;
    event.ProtocolType = kOwnProtocol;
    event.DefaultAlarmCode = message;
    event.ExtraText = text;
    if (text.empty())
        event.ExtraText = kUnknownSystem + Text(Between(message, kSystemCodeAt, message.size()));
    return step;
}

TelegramStep SiaStep(TextView message, const SurGardSettings& settings, SiaWait& wait, OleDate now) {
    TelegramStep step = Answered(bytes::ACK);
    const SiaMessage sia{.text = Text(Between(message, kSiaAt, message.size())),
                         .form = SiaForm::Brackets,
                         .eventTime = now,
                         .receiverLine = ReceiverLine(message)};
    wait.Take(sia, Text(message) += bytes::DC4, settings.sia, now, step);
    return step;
}

bool IsQualifier(char c) {
    return c == 'E' || c == 'R' || c == 'P';
}

/// The position of the qualifier; 0 when there is none. Accounts have four to ten digits, so it is counted
/// from the end, unless something stands behind the zone.
std::size_t QualifierPosition(TextView message) {
    const auto isAt = [&](std::size_t position) { return IsQualifier(UpperAt(message, position)); };
    const std::size_t fromEnd = message.size() > kBehindQualifier ? message.size() - kBehindQualifier : 0;
    if (fromEnd >= kAccountAt && isAt(fromEnd)) return fromEnd;
    if (isAt(kLongAccountQualifierAt)) return kLongAccountQualifierAt;
    for (std::size_t position = kAccountAt; position <= message.size(); ++position) {
        if (isAt(position)) return position;
    }
    return 0;
}

char QualifierNumber(char qualifier) {
    return qualifier == 'E' ? '1' : qualifier == 'R' ? '3' : '6';
}

Text ContactIdCode(TextView message, bool isQualifierNumber) {
    const TextView messageType = Between(message, kMessageTypeAt, kMessageTypeAt + 1);
    const std::size_t position = QualifierPosition(message);
    if (position == 0) return Text(Between(message, kAccountAt, message.size())) += messageType;
    const char qualifier = UpperAt(message, position);
    Text code(Between(message, kAccountAt, position - 1));
    code += messageType;
    code += isQualifierNumber ? QualifierNumber(qualifier) : qualifier;
    return code += Between(message, position + 1, position + kBehindQualifier);
}

TelegramStep ContactIdStep(TextView message, const SurGardSettings& settings, OleDate now) {
    TelegramStep step = AnsweredEvent(bytes::ACK, message, now);
    DecodedEvent& decoded = step.events.front();
    decoded.labelTexts = {kTextContactId};
    decoded.event.DefaultAlarmCode = ContactIdCode(message, settings.MLR2QualifierAsNumber);
    decoded.event.TranslationNumberToUse = Protocol::ContactID;
    return step;
}

TelegramStep RobofonStep(TextView message, OleDate now) {
    TelegramStep step = AnsweredEvent(bytes::ACK, message, now);
    DecodedEvent& decoded = step.events.front();
    decoded.labelTexts = {kTextRobofon};
    decoded.event.DefaultAlarmCode = Text(Between(message, 9, 14)) += Between(message, 19, 20);
    decoded.event.TranslationNumberToUse = Protocol::Robofon;
    return step;
}

TelegramStep UnknownStep(TextView message, const SurGardSettings& settings, OleDate now) {
    TelegramStep step = AnsweredEvent(bytes::NAK, message, now);
    IncomingEvent& event = step.events.front().event;
    event.ProtocolType = kOwnProtocol;
    event.DefaultAlarmCode = kUnknownCode;
    event.ExtraText = settings.unknownMessage;
    return step;
}

/// The family that the first character names, else the one that position 7 names; 0 for any other.
char FamilyOf(TextView message) {
    for (const std::size_t position : {std::size_t{1}, kOtherFamilyAt}) {
        const char family = UpperAt(message, position);
        if (family == 'S' || family == '5' || family == 'H') return family;
    }
    return 0;
}

TelegramStep MessageStep(TextView message, const SurGardSettings& settings, SiaWait& wait, OleDate now) {
    if (message.empty()) return {};
    const bool isHeartbeat = ByteAt(message, 1) == '1' && ByteAt(message, kHeartbeatMarkAt) == '@';
    if (isHeartbeat) return Answered(bytes::ACK);
    if (message.starts_with(kSystemStart)) return SystemStep(message, now);
    switch (FamilyOf(message)) {
        case 'S':
            return SiaStep(message, settings, wait, now);
        case '5':
            return ContactIdStep(message, settings, now);
        case 'H':
            return RobofonStep(message, now);
        default:
            return UnknownStep(message, settings, now);
    }
}

}  // namespace

std::span<const SettingRow<SurGardSettings>> SurGardSettingRows() {
    return kRows;
}

TelegramStep NextSurGardStep(TextView received, const SurGardSettings& settings, SiaWait& wait, OleDate now) {
    // Serial servers put line ends between the messages.
    const std::size_t lineEnds = std::min(received.find_first_not_of("\r\n"), received.size());
    if (lineEnds > 0) return {.consumed = lineEnds};
    const std::size_t end = received.find(bytes::DC4);
    if (end == TextView::npos) return {};
    TelegramStep step = MessageStep(received.substr(0, end), settings, wait, now);
    step.consumed = end + 1;
    return step;
}

}  // namespace nordkeep
