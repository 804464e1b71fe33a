#include "console/window/Conditions.h"

#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

using enum ConditionKind;
using enum ConditionWeight;
using Page = ConditionPage;

constexpr int kCaptionAllWell = 5000;
constexpr int kCaptionFirstWeight = 5030;

/// Of a caption %1 is the name, %2 the time of the begin, %3 the count.
struct Rule {
    ConditionKind kind;
    int caption;
    ConditionWeight weight;
    bool rings;
    bool hidesAlarms;
    Page opens;
};

// In the order of the kinds.
constexpr Rule kRules[] = {
    {ContactLost, 5002, Fault, true, true, Page::None},
    {LinesDisabled, 5003, Fault, false, true, Page::Lines},
    {NoLineOpen, 5004, Fault, true, true, Page::Lines},
    {LineFailed, 5005, Fault, true, true, Page::Lines},
    {LineUnusable, 5006, Fault, false, true, Page::Lines},
    {LineShut, 5007, Warning, false, false, Page::Lines},
    {LineHeld, 5008, Warning, false, false, Page::Lines},
    {LineMuted, 5009, Warning, false, true, Page::Lines},
    {LineQuiet, 5010, Warning, false, true, Page::Lines},
    {SoundDead, 5011, Fault, false, false, Page::Log},
    {EventsUnsaved, 5012, Fault, true, false, Page::Log},
    {JournalFailed, 5013, Fault, true, false, Page::Log},
    {PeerLost, 5014, Fault, false, false, Page::Log},
    {Standby, 5015, Warning, false, false, Page::None},
    {ClockJumped, 5016, Warning, false, false, Page::Log},
    {FaultsInFiles, 5017, Warning, false, false, Page::FaultList},
    {Flood, 5018, Note, false, false, Page::NewAlarms},
    {Hidden, 5019, Warning, false, true, Page::Filter},
    {InService, 5020, Note, false, false, Page::Service},
    {Loading, 5021, Note, false, true, Page::None},
    {Untouched, 5087, Fault, false, false, Page::NewAlarms},
    {ServiceEnds, 5106, Warning, false, false, Page::Service},
    {NoLine, 5803, Fault, false, true, Page::LineSetup},
};
static_assert(std::size(kRules) == static_cast<std::size_t>(kConditionKindCount));

const Rule& RuleOf(ConditionKind kind) {
    return kRules[static_cast<std::size_t>(kind)];
}

}  // namespace

Text ShortTime(OleDate time, OleDate now) {
    return FormatDate(time, time.Midnight() == now.Midnight() ? "HH:NN:SS" : "YYYY-MM-DD HH:NN");
}

Condition Conditions::RowOf(const ConditionFact& fact, OleDate now) const {
    const Rule& rule = RuleOf(fact.kind);
    Condition row;
    row.kind = fact.kind;
    row.name = fact.name;
    row.since = fact.since;
    row.sentence =
        captions_(rule.caption, {fact.name, ShortTime(fact.since, now), std::to_string(fact.count)});
    row.weight = rule.weight;
    row.rings = rule.rings;
    row.hidesAlarms = rule.hidesAlarms;
    row.opens = rule.opens;
    return row;
}

bool Conditions::Renew(std::vector<ConditionFact> facts, OleDate now) {
    DateFacts(facts, facts_, now);
    const auto hasBegun = [this](const ConditionFact& fact) {
        return RuleOf(fact.kind).rings && std::ranges::none_of(facts_, [&fact](const ConditionFact& old) {
                   return old.kind == fact.kind && old.name == fact.name;
               });
    };
    const bool isToRing = std::ranges::any_of(facts, hasBegun);
    facts_ = std::move(facts);
    rows_.clear();
    for (const ConditionFact& fact : facts_) rows_.push_back(RowOf(fact, now));
    std::ranges::stable_sort(rows_, [](const Condition& a, const Condition& b) {
        return a.weight != b.weight ? a.weight < b.weight : a.since > b.since;
    });
    return isToRing;
}

bool Conditions::Has(ConditionKind kind) const {
    return std::ranges::any_of(facts_, [kind](const ConditionFact& fact) { return fact.kind == kind; });
}

int Conditions::CountOf(ConditionKind kind) const {
    int count = 0;
    for (const ConditionFact& fact : facts_) count += fact.kind == kind ? fact.count : 0;
    return count;
}

bool Conditions::AreListsComplete() const {
    return std::ranges::none_of(rows_, &Condition::hidesAlarms);
}

Text Conditions::AllWell() const {
    return captions_(kCaptionAllWell);
}

Text Conditions::WordOf(ConditionWeight weight) const {
    return captions_(kCaptionFirstWeight + static_cast<int>(weight));
}

}  // namespace nordkeep
