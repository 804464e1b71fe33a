#include "ports/formats/ModemLines.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextLineTooLong = 1043;

constexpr std::size_t kLongestLine = 4096;
constexpr std::size_t kLongestAnswer = 64 << 10;
constexpr std::int64_t kLengthOfOneCallMs = 15'000;

}  // namespace

TelegramStep ModemLines::Take(TextView bytes, OleDate now) {
    TelegramStep step{.consumed = bytes.size()};
    for (std::size_t end = bytes.find(bytes::LF); end != TextView::npos; end = bytes.find(bytes::LF)) {
        TakePiece(bytes.substr(0, end), step);
        TakeLine(std::exchange(line_, {}), step, now);
        bytes.remove_prefix(end + 1);
    }
    TakePiece(bytes, step);
    return step;
}

void ModemLines::TakePiece(TextView piece, TelegramStep& step) {
    if (line_.size() + piece.size() > kLongestLine) {
        // Noise without an end writes one line.
        if (!std::exchange(isOverflowTold_, true)) step.notes.push_back({kTextLineTooLong, " " + portName_});
        line_.clear();
    }
    if (piece.size() <= kLongestLine) line_ += piece;
}

void ModemLines::TakeLine(Text line, TelegramStep& step, OleDate now) {
    isOverflowTold_ = false;
    if (isReading_ && answer_.size() + line.size() < kLongestAnswer) answer_ += line + '\n';
    const Text upper = UpperCase(line);
    for (std::size_t i = 0; i < expected_.size(); ++i) {
        if (expected_[i].empty() || upper.find(expected_[i]) == Text::npos) continue;
        result_ |= 1 << i;
        break;
    }
    std::erase(line, bytes::CR);
    if (line.starts_with("+CMTI:")) isMessageWaiting_ = true;
    if (line.starts_with("+CLIP:")) TakeCall(line, step, now);
}

// A phone that rings for minutes makes one event each quarter of a minute.
void ModemLines::TakeCall(const Text& line, TelegramStep& step, OleDate now) {
    const Text number = CallerNumber(line, sms_);
    const std::int64_t elapsedMs = std::abs(now.Milliseconds() - lastCallAt_.Milliseconds());
    if (number == lastCaller_ && elapsedMs < kLengthOfOneCallMs) return;
    lastCaller_ = number;
    lastCallAt_ = now;
    step.events.push_back(CallEvent(number, now));
}

void ModemLines::Expect(const Responses& responses) {
    expected_ = responses;
    result_ = 0;
}

void ModemLines::EndReading() {
    isReading_ = false;
    answer_.clear();
}

}  // namespace nordkeep
