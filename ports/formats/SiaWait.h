#pragma once

#include "ports/formats/SiaDecoding.h"

#include <deque>

namespace nordkeep {

/// The messages of one line that wait for the text that the receiver sends in a message of its own.
class SiaWait {
 public:
    /// Takes a message in; what it makes known at once, in order. With the wait off that is all of it.
    std::vector<DecodedEvent> Take(const SiaMessage& message, const SiaSettings& settings, OleDate now);
    /// The events whose text has not come in time, counted in whole ticks.
    std::vector<DecodedEvent> Tick(int tickMs, const SiaSettings& settings, OleDate now);
    /// The events of everything that waits.
    std::vector<DecodedEvent> Finish(const SiaSettings& settings, OleDate now);

    std::size_t Size() const { return waiting_.size(); }

 private:
    struct cMRL5SIAEvent {
        SiaMessage message{};
        Text account{};
        std::int64_t waitedMs = 0;
    };

    std::vector<DecodedEvent> DecodeFirst(const SiaSettings& settings, OleDate now);

    std::deque<cMRL5SIAEvent> waiting_{};  // in order of arrival
};

}  // namespace nordkeep
