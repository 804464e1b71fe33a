#pragma once

#include "ports/formats/Sms.h"

#include <array>
#include <utility>

namespace nordkeep {

/// What a modem says: its bytes cut into lines, the answer to the command in hand, and calls.
class ModemLines {
 public:
    /// Texts that end a wait; the number of the first that a line holds is a bit of the result.
    using Responses = std::array<Text, 4>;

    ModemLines(Text portName, SmsSettings sms) : portName_(std::move(portName)), sms_(std::move(sms)) {}

    /// Takes bytes in. The step tells of calls and of noise.
    TelegramStep Take(TextView bytes, OleDate now);
    /// Forgets the line that has begun.
    void Clear() { line_.clear(); }

    void Expect(const Responses& responses);
    void ExpectNothing() { expected_ = {}; }
    /// The bits of the responses that have come; 0 until one has.
    int Result() const { return result_; }

    /// From now on all lines are kept as the answer to a read command.
    void BeginReading() { isReading_ = true; }
    void EndReading();
    void ClearAnswer() { answer_.clear(); }
    const Text& Answer() const { return answer_; }

    /// The modem has told of a message; told once.
    bool TakeMessageMark() { return std::exchange(isMessageWaiting_, false); }
    bool IsMessageWaiting() const { return isMessageWaiting_; }
    void MarkMessage() { isMessageWaiting_ = true; }

 private:
    void TakePiece(TextView piece, TelegramStep& step);
    void TakeLine(Text line, TelegramStep& step, OleDate now);
    void TakeCall(const Text& line, TelegramStep& step, OleDate now);

    Text portName_;
    SmsSettings sms_;
    Text line_{};  // without its end so far
    bool isOverflowTold_ = false;
    Responses expected_{};  // while a command waits
    int result_ = 0;
    bool isReading_ = false;
    Text answer_{};  // all lines, while reading
    bool isMessageWaiting_ = false;
    Text lastCaller_{};
    OleDate lastCallAt_{};
};

}  // namespace nordkeep
