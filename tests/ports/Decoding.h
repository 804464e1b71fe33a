#pragma once

#include "ports/Decoder.h"

#include <vector>

namespace nordkeep {

/// What a decoder has made of a stream: the events and all replies in one.
struct Decoded {
    std::vector<IncomingEvent> events{};
    Text replies{};
    Text rest{};  // what waits for more
    int trafficNotes = 0;
};

/// Feeds the pieces one after the other, as a port does.
inline Decoded Decode(const Decoder& decoder, const std::vector<Text>& pieces, OleDate now = {}) {
    Decoded result;
    for (const Text& piece : pieces) {
        result.rest += piece;
        for (TelegramStep step = decoder(result.rest, now); step.consumed > 0;
             step = decoder(result.rest, now)) {
            result.rest.erase(0, step.consumed);
            result.replies += step.reply;
            result.trafficNotes += step.isTraffic;
            for (const DecodedEvent& decoded : step.events) result.events.push_back(decoded.event);
        }
    }
    return result;
}

/// What a record is made from, without the time; enough to tell two events apart.
inline Text Summary(const IncomingEvent& event) {
    return event.DefaultAlarmCode + "|" + event.ExtraText + "|" + event.LineCardNumber + "|" +
           std::to_string(event.TranslationNumberToUse) + "|" + event.RawAlarmCode +
           (event.MessageIsFollowedBySpeech ? "|speech" : "");
}

inline std::vector<Text> Summaries(const Decoded& decoded) {
    std::vector<Text> summaries;
    for (const IncomingEvent& event : decoded.events) summaries.push_back(Summary(event));
    return summaries;
}

}  // namespace nordkeep
