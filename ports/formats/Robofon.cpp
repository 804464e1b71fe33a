#include "ports/formats/Robofon.h"

#include "ports/formats/TelegramFields.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <array>
#include <optional>

namespace nordkeep {
namespace {

// Positions in the telegram, counted from 1.
constexpr std::size_t kKindAt = 4;
constexpr std::size_t kTimeAt = 5;
constexpr std::size_t kTimeLength = 10;
constexpr std::size_t kFirstPartAt = 5;
constexpr std::size_t kStatusAt = 15;
constexpr std::size_t kClassAt = 16;
constexpr std::size_t kIdAt = 17;
constexpr std::size_t kIdLength = 8;
constexpr std::size_t kEtxAt = 25;

struct ClassRow {
    char code;
    int labelText;
    Protocol protocol;
};

constexpr std::array<ClassRow, 20> kClasses = {
    {{'0', 2000, Protocol::Robofon},    {'1', 2001, Protocol::Futura},       {'2', 2002, Protocol::L400},
     {'4', 2004, Protocol::LFS4},       {'5', 2005, Protocol::Ericsson},     {'6', 2006, Protocol::Multidrop},
     {'7', 2007, Protocol::SIA},        {'8', 2008, Protocol::AntennaRBM},   {'9', 2009, Protocol::P100},
     {'A', 2010, Protocol::Electrolux}, {'B', 2011, Protocol::ContactID},    {'C', 2012, Protocol::L400Speak},
     {'D', 2013, Protocol::EricssonTT}, {'E', 2014, Protocol::Pensionar},    {'F', 2015, Protocol::Stentofon},
     {'G', 2205, Protocol::LA100},      {'H', 2216, Protocol::STT},          {'I', 2218, Protocol::Scancom},
     {'K', 2223, Protocol::Linjefel},   {'N', 2224, Protocol::AdemcoExpress}}};

constexpr char kOwnClass = 'S';

const std::array kRows = {kTelegramTimeRow<RobofonSettings>};

/// XOR of all bytes.
char XorOf(TextView bytes) {
    unsigned char sum = 0;
    for (const char c : bytes) sum = static_cast<unsigned char>(sum ^ static_cast<unsigned char>(c));
    return static_cast<char>(sum);
}

char At(TextView telegram, std::size_t position) {
    return static_cast<char>(ByteAt(telegram, position));
}

Text IdPart(TextView telegram, std::size_t start) {
    return UpperCase(TrimBlanks(Between(telegram, start, start + kIdLength - 1)));
}

/// None for a kind that carries no event.
std::optional<Text> IdCodeOf(TextView telegram) {
    const char kind = At(telegram, kKindAt);
    const bool hasFirstPart = kind == 'T' && At(telegram, kClassAt) != '5';
    if (kind != 'P' && kind != 'T') return std::nullopt;
    return (hasFirstPart ? IdPart(telegram, kFirstPartAt) : Text()) + IdPart(telegram, kIdAt);
}

Text ReceiverLine(char status) {
    const auto bits = static_cast<unsigned char>(status);
    return std::to_string((bits >> 4) & 7) + ":" + std::to_string(bits & 7);
}

/// The telegram's own time; `now` when its ten digits are no date.
OleDate TelegramTime(TextView telegram, OleDate now) {
    const TextView digits = Between(telegram, kTimeAt, kTimeAt + kTimeLength - 1);
    if (!IsNumeric(digits)) return now;
    const auto pair = [&](std::size_t index) { return LeadingInt32(digits.substr(2 * index, 2)); };
    return TelegramDate({pair(0), pair(1), pair(2), pair(3), pair(4), 0}, now);
}

void SetProtocol(DecodedEvent& decoded, char classCode) {
    if (classCode == kOwnClass) decoded.event.ProtocolType = kOwnProtocol;
    for (const ClassRow& row : kClasses) {
        if (row.code != classCode) continue;
        decoded.labelTexts[0] = row.labelText;
        decoded.event.TranslationNumberToUse = row.protocol;
    }
}

void Decode(TelegramStep& step, TextView telegram, const RobofonSettings& settings, OleDate now) {
    const std::optional<Text> idCode = IdCodeOf(telegram);
    if (!idCode) return;
    const bool hasTime = settings.TimeStampFromRBM && At(telegram, kKindAt) == 'P';
    const char status = At(telegram, kStatusAt);
    DecodedEvent& decoded = step.events.emplace_back();
    decoded.event = {.AlarmTime = hasTime ? TelegramTime(telegram, now) : now,
                     .DefaultAlarmCode = *idCode,
                     .LineCardNumber = ReceiverLine(status),
                     .MessageIsFollowedBySpeech = (static_cast<unsigned char>(status) & 8) != 0,
                     .RawAlarmCode = *idCode};
    SetProtocol(decoded, At(telegram, kClassAt));
}

}  // namespace

std::span<const SettingRow<RobofonSettings>> RobofonSettingRows() {
    return kRows;
}

Text EncodeRobofon(const RobofonFields& fields) {
    const Text body = "  " + Text(1, fields.kind) + FitWidth(fields.timeOrFirstPart, kTimeLength) +
                      fields.status + fields.classCode + FitWidth(fields.id, kIdLength) + bytes::ETX;
    return bytes::STX + body + XorOf(body);
}

TelegramStep NextRobofonStep(TextView received, const RobofonSettings& settings, OleDate now) {
    if (received.empty()) return {};
    if (received.front() != bytes::STX) return SkipToStart(received, TextView(&bytes::STX, 1));
    if (received.size() < kRobofonLength) return {};
    const TextView telegram = received.substr(0, kRobofonLength);
    TelegramStep step{.consumed = kRobofonLength};
    if (At(telegram, kEtxAt) != bytes::ETX || XorOf(telegram.substr(1)) != 0) {
        step.reply = Text(1, bytes::NAK);
        return step;
    }
    step.reply = Text(1, bytes::ACK);
    step.isTraffic = true;
    Decode(step, telegram, settings, now);
    return step;
}

}  // namespace nordkeep
