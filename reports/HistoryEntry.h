#pragma once

#include "platform/Clock.h"
#include "platform/JournalFile.h"
#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// Milliseconds since 1970 of a stamp of the journal; 0 for anything else.
std::int64_t UtcMsOf(std::string_view stamp);

/// Where a walk through the journal has come to. As a text "stamp|id".
struct HistoryPlace {
    std::string time{};
    std::int64_t id = 0;
    bool IsBegin() const { return time.empty(); }
    friend bool operator==(const HistoryPlace&, const HistoryPlace&) = default;
};
Text TextOf(const HistoryPlace& place);
/// The begin for anything that is no place.
HistoryPlace ReadHistoryPlace(TextView text);

/// What an entry of the journal tells people.
struct HistoryEntry {
    HistoryPlace place{};
    OleDate time{};  // local
    Text kind{};     // the word of the journal
    Text event{};
    int status = -2;  // -2: none
    Text priority{};
    Text object{};
    Text objectName{};
    Text set{};
    Text type{};
    Text typeName{};
    Text port{};
    Text user{};
    Text station{};
    Text text{};
    Text comment{};
    friend bool operator==(const HistoryEntry&, const HistoryEntry&) = default;
};
HistoryEntry HistoryEntryOf(const JournalRow& row, const Clock& clock);

/// Who has done it, for people: the login, else the station; empty for the system itself.
Text DoerOf(const HistoryEntry& entry);

}  // namespace nordkeep
