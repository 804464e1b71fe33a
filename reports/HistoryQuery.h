#pragma once

#include "reports/HistoryEntry.h"

namespace nordkeep {

/// Which entries somebody looks for. An empty field asks for nothing; texts are found anywhere in theirs,
/// without regard to case.
struct HistoryQuery {
    enum class What { AlarmsAndDeeds, Alarms, Deeds };

    OleDate from{};  // local; never: since ever
    OleDate to{};    // local, not included; never: until now
    What what = What::AlarmsAndDeeds;
    Text object{};    // code or name
    Text type{};      // code or name
    Text priority{};  // "1" or "1-3"
    Text doer{};      // user or station
    Text text{};      // alarm text, comment, object, type
    // These two are found by an index, whatever their age:
    Text event{};          // one record alone, with all that was done to it
    Text exactObject{};    // the ID code of one object
    HistoryPlace after{};  // goes on behind this entry, which is older than those shown before
    friend bool operator==(const HistoryQuery&, const HistoryQuery&) = default;
};

/// Everything but the time. The row is taken first by what costs little.
bool Fits(const HistoryQuery& query, const JournalRow& row);
bool Fits(const HistoryQuery& query, const HistoryEntry& entry);

}  // namespace nordkeep
