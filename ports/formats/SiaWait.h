#pragma once

#include "ports/formats/SiaDecoding.h"

#include <deque>

namespace nordkeep {

/// The messages of one line that wait for the text that the receiver sends in a message of its own.
class SiaWait {
 public:
    /// Takes in the message that `telegram` holds. The step gets what it makes known at once, in order; with
    /// the wait off that is all of it.
    void Take(const SiaMessage& message, TextView telegram, const SiaSettings& settings, OleDate now,
              TelegramStep& step);
    /// The events whose text has not come in time, counted in whole ticks.
    TelegramStep Tick(int tickMs, const SiaSettings& settings, OleDate now);
    /// The events of everything that waits.
    TelegramStep Finish(const SiaSettings& settings, OleDate now);

    std::size_t Size() const { return waiting_.size(); }

 private:
    struct cMRL5SIAEvent {
        SiaMessage message{};
        Text account{};
        std::uint64_t key = 0;
        std::int64_t waitedMs = 0;
    };

    void DecodeFirst(const SiaSettings& settings, OleDate now, TelegramStep& step);

    std::deque<cMRL5SIAEvent> waiting_{};  // in order of arrival
    std::uint64_t lastKey_ = 0;
};

}  // namespace nordkeep
