#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <cstdint>
#include <vector>

namespace nordkeep {

/// How long something took, in seconds, over so many alarms; all 0 without one.
struct Durations {
    std::int32_t count = 0;
    std::int32_t median = 0;
    std::int32_t ofTwenty = 0;  // 19 of 20 took no longer
    std::int32_t worst = 0;
    friend bool operator==(const Durations&, const Durations&) = default;
};
/// Of these, whose order changes.
Durations DurationsOf(std::vector<std::int32_t>& seconds);

/// How soon people were with the alarms of one priority, hour or operator.
struct Reaction {
    Text group{};  // the priority, the hour, who; empty for all together
    std::int32_t alarms = 0;
    Durations touch{};  // until somebody did anything to it
    Durations comment{};
    Durations end{};
    friend bool operator==(const Reaction&, const Reaction&) = default;
};

/// What raised how many alarms.
struct AlarmSource {
    Text object{};
    Text name{};  // of the object
    Text type{};
    std::int32_t count = 0;
    friend bool operator==(const AlarmSource&, const AlarmSource&) = default;
};

/// What a stretch of time was like.
struct AlarmFigures {
    static constexpr int kBinMinutes = 10;
    static constexpr std::size_t kMostSources = 10;

    OleDate from{};  // local
    OleDate to{};    // not included
    std::int32_t alarms = 0;
    bool isCut = false;      // there were more than a report counts
    bool isReadable = true;  // else the journal could not be read
    Reaction all{};
    std::vector<Reaction> byPriority{};
    std::vector<Reaction> byHour{};      // of the arrival
    std::vector<Reaction> byOperator{};  // of the deed: each deed counts for who did it
    std::vector<std::int32_t> bins{};    // alarms in each ten minutes
    std::int32_t floods = 0;
    std::int32_t floodSeconds = 0;
    std::vector<AlarmSource> frequent{};    // the most frequent objects
    std::vector<AlarmSource> chattering{};  // three times the same within a minute; count: how often so
    std::vector<AlarmSource> stale{};       // open for more than a day
    std::vector<AlarmSource> unknown{};     // codes that no set knows
    friend bool operator==(const AlarmFigures&, const AlarmFigures&) = default;

    std::int32_t WorstBin() const;
    /// Of the time that has passed, in thousandths.
    std::int32_t FloodShare(OleDate now) const;
};

}  // namespace nordkeep
