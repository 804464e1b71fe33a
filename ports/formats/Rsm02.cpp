#include "ports/formats/Rsm02.h"

#include "ports/formats/Rsm02Events.h"
#include "ports/formats/TelegramFields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextHello = 1160;
constexpr int kTextTooShort = 1164;
constexpr int kTextEmpty = 1165;
constexpr int kTextWrongSum = 1166;
constexpr int kTextNoEnd = 1167;

constexpr TextView kHello = "\x02NKGATEWAY\x03";

// Positions in a frame, counted from 1. The length L counts the bytes from position 3 up to and including
// ETX.
constexpr std::size_t kLengthAt = 4;
constexpr std::size_t kKindAt = 5;
constexpr std::size_t kTimeAt = 6;
constexpr std::size_t kReceiverLineAt = 11;
constexpr std::size_t kClassAt = 12;
constexpr std::size_t kFragmentAt = 13;
constexpr std::size_t kTextAt = 15;
constexpr std::size_t kShortestFrame = 17;
constexpr std::size_t kShortestLength = 14;
constexpr std::size_t kLongestEmptyLength = 15;

constexpr unsigned kFirstFragment = 1u << 5;
constexpr unsigned kLastFragment = 1u << 4;
constexpr unsigned kSpeech = 1u << 0;

// The longest documents have some 100,000 characters; what goes beyond is left away.
constexpr std::size_t kLongestText = 1 << 17;

const std::array kRows = {
    kTelegramTimeRow<Rsm02Settings>,
    kLineEndRow<Rsm02Settings>,
    kNumericCodeRow<Rsm02Settings>,
};

/// The sum of all bytes as two bytes, the high one first.
Text WordSumHex(TextView bytes) {
    unsigned sum = 0;
    for (const char c : bytes) sum += static_cast<unsigned char>(c);
    return {static_cast<char>(sum / 256), static_cast<char>(sum % 256)};
}

/// The receiver leaves STX out of the sum of its frames...
Text SumOfFrame(TextView frame) {
    return WordSumHex(Between(frame, 2, frame.size() - 3));
}

/// ...but expects it in the sum of ours.
Text TimeFrame(const CivilTime& time) {
    Text frame{bytes::STX, 0, 0, 12, 'I'};
    for (const int number : {time.year - 2000, time.month, time.day, time.hour, time.minute, time.second}) {
        frame += static_cast<char>(number);
    }
    return frame + WordSumHex(frame) + bytes::ETX;
}

TelegramStep TimeRequestStep(OleDate now) {
    TelegramStep step{.consumed = 1, .isTraffic = true};
    const CivilTime time = now.Civil();
    // The frame has one byte for the year of this century.
    if (time.year >= 2000 && time.year < 2100) step.reply = TimeFrame(time);
    return step;
}

TelegramStep HelloStep(const Rsm02Line& line) {
    line.state.hasSession = true;
    return {.consumed = kHello.size(),
            .notes = {{kTextHello, line.settings.PortName + " " + line.settings.PortDescription}}};
}

void AddFragment(Text& accumulated, TextView frame) {
    if ((ByteAt(frame, kFragmentAt) & kFirstFragment) != 0) accumulated.clear();
    Text fragment(TrimBlanks(Between(frame, kTextAt, frame.size() - 3)));
    std::erase(fragment, '\xFF');
    accumulated.append(fragment, 0, kLongestText - std::min(kLongestText, accumulated.size()));
}

OleDate FrameTime(TextView frame, OleDate now) {
    const auto number = [&](std::size_t index) { return static_cast<int>(ByteAt(frame, kTimeAt + index)); };
    return TelegramDate({number(0), number(1), number(2), number(3), number(4), 0}, now);
}

void TakeFragment(TelegramStep& step, TextView frame, const Rsm02Line& line, OleDate now) {
    AddFragment(line.state.accumulated, frame);
    const unsigned bits = ByteAt(frame, kFragmentAt);
    if ((bits & kLastFragment) == 0) return;
    step.isTraffic = true;
    const Rsm02Telegram telegram{.classCode = static_cast<char>(ByteAt(frame, kClassAt)),
                                 .time = line.settings.TimeStampFromRBM ? FrameTime(frame, now) : now,
                                 .receiverLine = std::to_string(ByteAt(frame, kReceiverLineAt)),
                                 .isFollowedBySpeech = (bits & kSpeech) != 0,
                                 .text = line.state.accumulated};
    step.events = DecodeRsm02Text(telegram, line, now);
}

TelegramStep FrameStep(TextView frame, const Rsm02Line& line, OleDate now) {
    const Text noteTail = " - " + line.settings.PortDescription;
    TelegramStep step{.consumed = frame.size(), .reply = Text(1, bytes::NAK)};
    if (frame.back() != bytes::ETX) {
        step.notes = {{kTextNoEnd, noteTail}};
        return step;
    }
    if (Between(frame, frame.size() - 2, frame.size() - 1) != SumOfFrame(frame)) {
        step.notes = {{kTextWrongSum, noteTail}};
        return step;
    }
    step.reply = Text(1, bytes::ACK);
    if (ByteAt(frame, kLengthAt) <= kLongestEmptyLength) {
        step.notes = {{kTextEmpty, noteTail}};
    } else if (ByteAt(frame, kKindAt) == 'P') {
        TakeFragment(step, frame, line, now);
    }
    return step;
}

/// Such a length is noise, and where the next frame begins is unknown.
TelegramStep TooShortStep(TextView received, const Rsm02Line& line) {
    line.state.accumulated.clear();
    return {.consumed = received.size(),
            .notes = {{kTextTooShort, "(MessageLength < 14) - " + line.settings.PortDescription}}};
}

}  // namespace

std::span<const SettingRow<Rsm02Settings>> Rsm02SettingRows() {
    return kRows;
}

TelegramStep NextRsm02Step(TextView received, const Rsm02Line& line, OleDate now) {
    if (received.empty()) return {};
    if (received.front() == bytes::ENQ) return TimeRequestStep(now);
    if (received.front() != bytes::STX) return SkipToStart(received, "\x02\x05");
    if (received.starts_with(kHello)) return HelloStep(line);
    if (received.size() < kShortestFrame) return {};
    const std::size_t length = ByteAt(received, kLengthAt);
    if (length < kShortestLength) return TooShortStep(received, line);
    if (received.size() < length + 2) return {};
    return FrameStep(received.substr(0, length + 2), line, now);
}

}  // namespace nordkeep
