#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <vector>

namespace nordkeep {

// How a copy does, as values: its lines, and what is wrong. The numbers of both enums travel between copies,
// so that new ones come at the end.

enum class LineState {
    Open,
    Failed,          // it is to be open, and could not be opened, or its far end is not reached
    Disabled,        // until a date
    Held,            // closed by hand
    Waiting,         // its settings let it be closed now: no dispatcher, no client
    Unusable,        // its settings make no line
    WaitsForCaller,  // it is open, and nobody has called
    Connected,
    Muted,  // what comes is logged and thrown away
    Quiet,  // no sign of life for longer than its settings allow
};
inline constexpr int kLineStateCount = static_cast<int>(LineState::Quiet) + 1;
/// It can receive.
inline bool IsWorking(LineState state) {
    return state == LineState::Open || state == LineState::WaitsForCaller || state == LineState::Connected;
}

/// How a line does at the moment.
struct LineFigures {
    Text name{};         // of its settings file, "Port1"
    Text description{};  // what people call it
    Text kind{};         // "TCPS 17601, Robofon (RBM600)"
    LineState state = LineState::Unusable;
    OleDate since{};  // of the state
    OleDate lastTraffic{};
    int telegramsToday = 0;
    int refusedToday = 0;     // answered with a no, or thrown away
    int reconnectsToday = 0;  // times that it has come back
    Text caller{};            // who is, or was last, at the other end
    friend bool operator==(const LineFigures&, const LineFigures&) = default;
};

/// A sender with an account of its own, on a line that many share.
struct LineAccount {
    Text name{};
    OleDate lastMessage{};  // never: none since the program was started
    bool isSilent = false;  // for longer than its settings allow
};

/// Where alarms go besides the store.
struct OutputState {
    Text name{};              // one word, the same in every language
    bool isUp = false;        // it reaches its peer, as far as can be told
    std::size_t waiting = 0;  // what it has still to deliver
};

enum class ConditionKind {
    ContactLost,
    LinesDisabled,  // by a switch at the start
    NoLineOpen,
    LineFailed,
    LineUnusable,
    LineShut,  // until a date
    LineHeld,
    LineMuted,
    LineQuiet,
    SoundDead,
    EventsUnsaved,
    JournalFailed,
    PeerLost,  // of an output
    Standby,   // a client works at another server than its first
    ClockJumped,
    FaultsInFiles,  // in what people have typed
    Flood,
    Hidden,  // new alarms, by a filter
    InService,
    Loading,
    Untouched,    // new alarms, for longer than their priority allows
    ServiceEnds,  // soon; its time is that of the first end
    NoLine,       // has been set up
};
inline constexpr int kConditionKindCount = static_cast<int>(ConditionKind::NoLine) + 1;

/// Something that is wrong, or has to be known, while it is true.
struct ConditionFact {
    ConditionKind kind = ConditionKind::ContactLost;
    Text name{};      // of whom: a line's description, an output; empty where there is only one
    OleDate since{};  // never: not told
    int count = 0;    // of things, percent or seconds, by kind
    friend bool operator==(const ConditionFact&, const ConditionFact&) = default;
};

/// Dates the facts that say nothing of their begin: from the same fact of last time, else from now.
void DateFacts(std::vector<ConditionFact>& facts, const std::vector<ConditionFact>& before, OleDate now);

}  // namespace nordkeep
