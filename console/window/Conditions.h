#pragma once

#include "console/lists/Captions.h"
#include "runtime/CentreState.h"

namespace nordkeep {

/// How much a condition weighs: by its colour, its sign, and its place in front of lighter ones.
enum class ConditionWeight { Fault, Warning, Note };

/// What a click on a condition shows.
enum class ConditionPage { None, Lines, FaultList, Service, NewAlarms, Filter, Log, LineSetup };

/// One thing that is wrong, or has to be known: a sentence with its name in it.
struct Condition {
    ConditionKind kind = ConditionKind::ContactLost;
    Text name{};
    OleDate since{};
    Text sentence{};
    ConditionWeight weight = ConditionWeight::Note;
    bool rings = false;        // until somebody silences it
    bool hidesAlarms = false;  // an empty list says nothing while it is true
    ConditionPage opens = ConditionPage::None;
    friend bool operator==(const Condition&, const Condition&) = default;
};

/// Everything that is wrong at the moment, in one place. Facts go in, rows come out by one table: each kind
/// of condition is a row of it.
class Conditions {
 public:
    explicit Conditions(const Captions& captions) : captions_(captions) {}

    /// Takes the present facts. True when something has begun that rings.
    bool Renew(std::vector<ConditionFact> facts, OleDate now);
    /// The heaviest first, among equals the latest.
    const std::vector<Condition>& Rows() const { return rows_; }
    bool Has(ConditionKind kind) const;
    /// Of all facts of the kind together; 0 without one.
    int CountOf(ConditionKind kind) const;
    /// An empty list of alarms can be trusted.
    bool AreListsComplete() const;
    /// What stands where nothing is wrong.
    Text AllWell() const;
    /// The word of a weight, for who does not see its colour.
    Text WordOf(ConditionWeight weight) const;

 private:
    Condition RowOf(const ConditionFact& fact, OleDate now) const;

    const Captions& captions_;
    std::vector<ConditionFact> facts_{};
    std::vector<Condition> rows_{};
};

/// "21:14:07" today, with its day in front before.
Text ShortTime(OleDate time, OleDate now);

}  // namespace nordkeep
