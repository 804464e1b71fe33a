#pragma once

#include "ports/formats/CallerIdentity.h"
#include "ports/formats/LineFormat.h"
#include "runtime/Dates.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace nordkeep {

struct NoCallers final : CallerBook {
    std::optional<KnownCaller> FindCaller(TextView) const override { return std::nullopt; }
};

/// What looks at the front of the received text.
using Decoder = std::function<TelegramStep(TextView received, OleDate now)>;

/// Bytes as a person reads them: what is not printable ASCII as \xNN.
inline Text Shown(TextView bytes) {
    constexpr const char* kDigits = "0123456789ABCDEF";
    Text shown;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 32 && byte < 127) {
            shown += c;
        } else {
            shown += Text("\\x") + kDigits[byte / 16] + kDigits[byte % 16];
        }
    }
    return shown;
}

/// Everything of an event that is not as an empty event has it, in the order of the intake's arguments:
/// "label=2105; number=17; code=1234; text=Larm hall".
inline Text Facts(const DecodedEvent& decoded, OleDate now) {
    const IncomingEvent& e = decoded.event;
    Text label = Shown(e.ProtocolType);
    for (const int number : decoded.labelTexts) {
        if (number != 0) label += (label.empty() ? "" : " ") + std::to_string(number);
    }
    Text facts;
    const auto add = [&](const char* name, const Text& value) {
        if (!value.empty()) facts += (facts.empty() ? Text() : Text("; ")) + name + "=" + value;
    };
    add("time", e.AlarmTime == now ? Text() : GeneralDate(e.AlarmTime));
    add("label", label);
    add("type", e.DefaultType == -1 ? Text() : std::to_string(e.DefaultType));
    add("code", Shown(e.DefaultAlarmCode));
    add("text", Shown(e.ExtraText));
    add("caller", Shown(e.Originator));
    add("object", Shown(e.ObjectID));
    add("number", std::to_string(NumberOf(e.TranslationNumberToUse)));
    add("set", e.SpecificTranslationToUse ? "given" : "");
    add("line", e.LineCardNumber);
    add("speech", e.MessageIsFollowedBySpeech ? "yes" : "");
    add("xml", Shown(e.XMLDocument));
    add("forced", e.ForcedTypeCode);
    add("modifiers", Shown(e.SIAModifier));
    add("raw", Shown(e.RawAlarmCode));
    add("block", Shown(e.SIABlockType));
    add("zone", Shown(e.SIAPrefixText));
    add("error", e.SIASuffixText);
    add("url", Shown(e.URL));
    return facts;
}

/// What a decoder has made of a stream: the events and all replies in one.
struct Decoded {
    std::vector<IncomingEvent> events{};
    std::vector<Text> facts{};
    std::vector<DecoderNote> notes{};
    Text replies{};
    Text rest{};  // what waits for more
    int trafficNotes = 0;
    int closes = 0;
};

/// Feeds the pieces one after the other, as a port does.
inline Decoded Decode(const Decoder& decoder, const std::vector<Text>& pieces, OleDate now = {}) {
    Decoded result;
    for (const Text& piece : pieces) {
        result.rest += piece;
        for (TelegramStep step = decoder(result.rest, now); step.consumed > 0;
             step = decoder(result.rest, now)) {
            EXPECT_LE(step.consumed, result.rest.size());
            result.rest.erase(0, step.consumed);
            result.replies += step.reply;
            result.trafficNotes += step.isTraffic;
            result.closes += step.closesLine;
            for (const DecodedEvent& decoded : step.events) {
                result.events.push_back(decoded.event);
                result.facts.push_back(Facts(decoded, now));
            }
            result.notes.insert(result.notes.end(), step.notes.begin(), step.notes.end());
        }
    }
    return result;
}

/// A fresh decoder, with the state of a line that has just come up.
using NewDecoder = std::function<Decoder()>;

/// Every way to cut a stream in two, and into single bytes, gives the events and replies of the whole.
inline void ExpectSameHoweverCut(const NewDecoder& newDecoder, const Text& stream, OleDate now = {}) {
    const Decoded whole = Decode(newDecoder(), {stream}, now);
    const auto expectSame = [&](const std::vector<Text>& pieces, std::size_t cut) {
        const Decoded cutUp = Decode(newDecoder(), pieces, now);
        EXPECT_EQ(cutUp.facts, whole.facts) << "cut at " << cut;
        EXPECT_EQ(cutUp.replies, whole.replies) << "cut at " << cut;
        EXPECT_EQ(cutUp.rest, whole.rest) << "cut at " << cut;
        EXPECT_EQ(cutUp.trafficNotes, whole.trafficNotes) << "cut at " << cut;
    };
    std::vector<Text> singles;
    for (std::size_t cut = 0; cut < stream.size(); ++cut) {
        expectSame({stream.substr(0, cut), stream.substr(cut)}, cut);
        singles.emplace_back(1, stream[cut]);
    }
    expectSame(singles, 1);
}

/// Every two of the streams, glued, give the events and replies of the first and then of the second.
inline void ExpectPairsAsOneByOne(const NewDecoder& newDecoder, const std::vector<Text>& streams,
                                  OleDate now = {}) {
    for (const Text& first : streams) {
        for (const Text& second : streams) {
            const Decoded glued = Decode(newDecoder(), {first + second}, now);
            Decoded expected = Decode(newDecoder(), {first}, now);
            const Decoded behind = Decode(newDecoder(), {second}, now);
            expected.facts.insert(expected.facts.end(), behind.facts.begin(), behind.facts.end());
            EXPECT_EQ(glued.facts, expected.facts) << Shown(first + second);
            EXPECT_EQ(glued.replies, expected.replies + behind.replies) << Shown(first + second);
        }
    }
}

/// Noise made from the parts that mean something to the decoder: it comes to an end, and what it makes of the
/// noise stays in proportion.
inline void ExpectWithstands(const NewDecoder& newDecoder, const std::vector<Text>& parts) {
    unsigned random = 1;
    const auto next = [&random](std::size_t limit) {
        random = random * 1664525u + 1013904223u;
        return (random >> 8) % limit;
    };
    for (int round = 0; round < 300; ++round) {
        std::vector<Text> pieces;
        std::size_t size = 0;
        for (int i = 0; i < 20; ++i) {
            Text piece = parts[next(parts.size())];
            if (next(3) == 0 && !piece.empty()) piece[next(piece.size())] = static_cast<char>(next(256));
            size += piece.size();
            pieces.push_back(std::move(piece));
        }
        const Decoded decoded = Decode(newDecoder(), pieces);
        EXPECT_LE(decoded.events.size(), size);
        EXPECT_LE(decoded.rest.size(), size);
    }
    for (const char filler : {'\0', '\xFF', '0', ' '}) {
        Decode(newDecoder(), {Text(100'000, filler)});
        for (const Text& part : parts) Decode(newDecoder(), {part + Text(100'000, filler) + part});
    }
}

/// What a record is made from, without the time; enough to tell two events apart.
inline Text Summary(const IncomingEvent& event) {
    return event.DefaultAlarmCode + "|" + event.ExtraText + "|" + event.LineCardNumber + "|" +
           std::to_string(NumberOf(event.TranslationNumberToUse)) + "|" + event.RawAlarmCode +
           (event.MessageIsFollowedBySpeech ? "|speech" : "");
}

inline std::vector<Text> Summaries(const Decoded& decoded) {
    std::vector<Text> summaries;
    for (const IncomingEvent& event : decoded.events) summaries.push_back(Summary(event));
    return summaries;
}

/// The bytes of hexadecimal pairs with blanks between them.
inline Text FromHex(TextView pairs) {
    Text digits(pairs);
    std::erase(digits, ' ');
    Text bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

}  // namespace nordkeep
