#include "ports/formats/GoogolT1.h"

#include "ports/formats/Crc16.h"
#include "ports/formats/TelegramFields.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kTextLabel = "T1 text";
constexpr int kTextClockSet = 1044;
constexpr std::int64_t kFirstClockDelayMs = 5000;

// Positions in a binary frame, counted from 1. The data begin behind the length byte.
constexpr std::size_t kKindAt = 2;
constexpr std::size_t kSequenceAt = 3;
constexpr std::size_t kLengthAt = 6;
constexpr std::size_t kTimeAt = 7;
constexpr std::size_t kClassAt = 16;
constexpr std::size_t kStatusAt = 17;
constexpr std::size_t kTextAt = 18;
constexpr std::size_t kShortest = 8;
constexpr std::size_t kTimeLength = 6;

struct ClassRow {
    int code;
    int labelText;
    Protocol protocol;
};

constexpr std::array<ClassRow, 8> kClasses = {{{17, 2100, Protocol::Robofon},
                                               {18, 2101, Protocol::Googol},
                                               {19, 2102, Protocol::P100},
                                               {20, 2103, Protocol::LA100},
                                               {21, 2104, Protocol::ContactID},
                                               {33, 2105, Protocol::SMS},
                                               {34, 2106, Protocol::SOSAccess},
                                               {49, 2107, Protocol::SIA}}};

constexpr SettingScope kPort = SettingScope::Port;
const std::array kRows = {
    kTelegramTimeRow<GoogolSettings>,
    SettingRow<GoogolSettings>{"General", "GoogolTextLimit", kPort, &GoogolSettings::GoogolTextLimit, 0,
                               32767},
    SettingRow<GoogolSettings>{"General", "GoogolTextIsAlarmCode", kPort,
                               &GoogolSettings::GoogolTextIsAlarmCode},
    SettingRow<GoogolSettings>{"General", "SetTimeInterval", kPort, &GoogolSettings::SetTimeInterval},
};

void TakeText(IncomingEvent& event, TextView text, const GoogolSettings& settings) {
    event.RawAlarmCode = CleanText(text, settings.cleaning);
    CodeAndText parts = SplitCode(event.RawAlarmCode, settings.GoogolTextIsAlarmCode);
    event.DefaultAlarmCode = std::move(parts.code);
    event.ExtraText = std::move(parts.text);
}

TelegramStep TextFrameStep(TextView received, const GoogolSettings& settings, OleDate now) {
    const std::size_t end = received.find(bytes::ETX);
    if (end == TextView::npos) {
        const bool mayStillCome = received.size() < static_cast<std::size_t>(settings.GoogolTextLimit);
        return {.consumed = mayStillCome ? 0u : 1u};
    }
    TelegramStep step{.consumed = end + 1, .isTraffic = true};
    IncomingEvent& event = step.events.emplace_back().event;
    event.AlarmTime = now;
    event.ProtocolType = kTextLabel;
    event.TranslationNumberToUse = Protocol::PlainText;
    TakeText(event, TrimBlanks(received.substr(1, end - 1)), settings);
    return step;
}

/// Positions 1 to n + 6 of a frame: all but the check.
OleDate FrameTime(TextView frame, OleDate now) {
    if (frame.size() < kTimeAt + kTimeLength - 1) return now;
    const auto number = [&](std::size_t index) { return static_cast<int>(ByteAt(frame, kTimeAt + index)); };
    return TelegramDate({number(0), number(1), number(2), number(3), number(4), number(5)}, now);
}

void DecodeFrame(TelegramStep& step, TextView frame, const GoogolSettings& settings, OleDate now) {
    DecodedEvent& decoded = step.events.emplace_back();
    decoded.event.AlarmTime = settings.TimeStampFromRBM ? FrameTime(frame, now) : now;
    decoded.event.MessageIsFollowedBySpeech = ByteAt(frame, kStatusAt) != 0;
    TakeText(decoded.event, Between(frame, kTextAt, frame.size()), settings);
    for (const ClassRow& row : kClasses) {
        if (row.code != ByteAt(frame, kClassAt)) continue;
        decoded.labelTexts[0] = row.labelText;
        decoded.event.TranslationNumberToUse = row.protocol;
    }
}

Text Acknowledge(unsigned char sequence) {
    Text reply(1, bytes::ACK);
    if (sequence != 0) reply += static_cast<char>(sequence | 0x80);
    return reply;
}

TelegramStep BinaryFrameStep(TextView received, const GoogolSettings& settings, OleDate now) {
    if (received.size() < kShortest) return {};
    const std::size_t bodyLength = kLengthAt + ByteAt(received, kLengthAt);
    const std::size_t length = bodyLength + 2;
    if (received.size() < length) return {};
    const TextView frame = received.substr(0, bodyLength);
    const unsigned check = ByteAt(received, length - 1) * 256u + ByteAt(received, length);
    // Where the next frame begins is unknown then, so all is thrown away.
    if (CRC16(frame) != check) return {.consumed = received.size()};
    TelegramStep step{
        .consumed = length, .reply = Acknowledge(ByteAt(frame, kSequenceAt)), .isTraffic = true};
    if (ByteAt(frame, kKindAt) == '0') DecodeFrame(step, frame, settings, now);
    return step;
}

Text ClockTelegram(OleDate now) {
    // The picture with a four-digit year, less its century.
    const Text digits = CompactTime(now).substr(2);
    return bytes::STX + ("T" + digits) + Digits(now.Weekday(), 2) + bytes::ETX;
}

}  // namespace

std::span<const SettingRow<GoogolSettings>> GoogolSettingRows() {
    return kRows;
}

TelegramStep NextGoogolStep(TextView received, const GoogolSettings& settings, OleDate now) {
    if (received.empty()) return {};
    if (received.front() == bytes::STX) return TextFrameStep(received, settings, now);
    if (received.front() == bytes::SOH) return BinaryFrameStep(received, settings, now);
    return SkipToStart(received, "\x01\x02");
}

TelegramStep SetClockInGoogolT1(GoogolClock& clock, const GoogolSettings& settings, const ServiceTick& tick) {
    if (!clock.lastSetMs) clock.lastSetMs = tick.monotonicMs + kFirstClockDelayMs;
    const std::int64_t passedMs = tick.monotonicMs - *clock.lastSetMs;
    const bool isDue = settings.SetTimeInterval > 0 && passedMs > settings.SetTimeInterval * 60'000LL;
    if (!(isDue || tick.isClockWanted) || !tick.canSend) return {};
    clock = {.lastSetMs = tick.monotonicMs};
    return {.reply = ClockTelegram(tick.now), .notes = {{kTextClockSet, settings.PortDescription}}};
}

}  // namespace nordkeep
