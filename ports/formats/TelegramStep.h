#pragma once

#include "pipeline/IncomingEvent.h"
#include "platform/Text.h"

#include <array>
#include <cstdint>
#include <vector>

namespace nordkeep {

/// Bytes of the line protocols.
namespace bytes {
inline constexpr char SOH = 1;
inline constexpr char STX = 2;
inline constexpr char ETX = 3;
inline constexpr char ENQ = 5;
inline constexpr char ACK = 6;
inline constexpr char BEL = 7;
inline constexpr char LF = 10;
inline constexpr char FF = 12;
inline constexpr char CR = 13;
inline constexpr char DC4 = 20;
inline constexpr char NAK = 21;
}  // namespace bytes

/// One event of a telegram.
struct DecodedEvent {
    IncomingEvent event{};
    /// Language texts that make the event's protocol label, joined by a blank; 0 ends the list. With none
    /// the event carries its label itself.
    std::array<int, 2> labelTexts{};
};

/// A line for the system log: a language text and what follows it.
struct DecoderNote {
    int text = 0;
    Text tail{};
};

/// A telegram that is answered although it makes no event yet. Given to the decoder again as it was, at the
/// time at which it arrived, it waits again.
struct HeldTelegram {
    std::uint64_t key = 0;  // of its own on its line
    Text telegram{};
    OleDate arrived{};
};

/// What a decoder finds at the front of the received text. It does nothing itself: the port drops
/// `consumed` bytes, takes the events in, and sends the reply last.
struct TelegramStep {
    std::size_t consumed = 0;  // nothing consumed: wait for more
    Text reply{};
    bool isTraffic = false;  // proves that the line works, for the supervision of test telegrams
    std::vector<DecodedEvent> events{};
    std::vector<IncomingEvent> signs{};  // of senders who live and have nothing to tell
    std::vector<DecoderNote> notes{};
    std::vector<HeldTelegram> held{};
    std::vector<std::uint64_t> settled{};  // keys of held telegrams whose events stand in `events`
    bool closesLine = false;               // the sender expects a TCP line to be closed behind the reply
    std::uint64_t receipt = 0;             // under which the format is told whether the events are stored
    bool isRefused = false;                // answered with a no that is not the byte NAK
    bool isRepeat = false;                 // the reply waits for the events of steps before
};

}  // namespace nordkeep
