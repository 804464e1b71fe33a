#pragma once

#include "runtime/CentreState.h"
#include "store/CommitTimes.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace nordkeep {

/// A line of the centre. Texts in Windows-1252.
struct LineStatus {
    Text name{};         // of its settings file, "Port1"
    Text description{};  // what people call it
    Text kind{};
    std::string state{};  // one word
    Text stateText{};     // the same for people
    bool isOpen = false;
    OleDate since{};  // of the state; never when not known
    OleDate lastTraffic{};
    std::uint64_t telegrams = 0;                     // since the start
    std::uint64_t events = 0;                        // of these
    std::map<std::string, std::uint64_t> refused{};  // since the start, by reason
    int telegramsToday = 0;
    int refusedToday = 0;
};

struct StatusFacts {
    std::vector<LineStatus> lines{};
    std::vector<OutputState> outputs{};
    std::vector<Text> conditions{};       // what is wrong, in sentences for people
    std::vector<std::string> notReady{};  // why this copy takes no alarms in; empty when it does
    OleDate oldestUnhandled{};            // never without one
    std::int64_t longestStallMs = 0;      // since the start
    std::size_t clients = 0;
    std::uint64_t storeErrors = 0;  // since the start
    std::uint64_t memoryBytes = 0;
    std::size_t openDescriptors = 0;
};

/// Gathers them when somebody asks, from what has been counted already.
class StatusSource {
 public:
    virtual ~StatusSource() = default;
    virtual StatusFacts Facts() const = 0;
};

}  // namespace nordkeep
