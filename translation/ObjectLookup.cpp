#include "translation/ObjectLookup.h"

#include "runtime/SharedTexts.h"

#include <algorithm>

namespace nordkeep {
namespace {

using Position = ObjectIndex::Position;

/// The first object with this code that takes the event of this caller.
Position FirstMatch(const ObjectIndex& index, TextView code, TextView caller, const LookupRules& rules) {
    const ObjectIndex::SameCode same = index.WithCode(code);
    if (!rules.matchCallers) return same.any;
    if (caller == rules.hiddenNumber) return same.withoutCaller;
    if (caller.empty()) return same.forAnyCaller;
    return std::min(same.forAnyCaller, index.WithCodeAndCaller(code, caller));
}

cIDCode* ObjectAt(const cTranslate& set, Position position) {
    return position < set.m_IdCodes.size() ? set.m_IdCodes[position].get() : nullptr;
}

std::optional<CallerMatch> FindCallerAtPort(const PortBinding& port, TextView number) {
    for (int place = 0; place < kProtocolCount; ++place) {
        for (cTranslate* set : port.SetsOf(ProtocolOf(place))) {
            cIDCode* object = ObjectAt(*set, set->index.FedByCaller(number));
            if (object != nullptr) return CallerMatch{set, object, ProtocolOf(place)};
        }
    }
    return std::nullopt;
}

}  // namespace

LookupRules MakeLookupRules(const TranslationSettings& settings, const Language& language) {
    return {.matchCallers = settings.MatchCLIDIfExisting,
            .hiddenNumber = language.GetLanguageText(kTextHiddenNumber),
            .parksResets = settings.UnAssociatedResetEventsTimeout >= 1};
}

ObjectMatch MatchObject(const cTranslate& set, const ObjectQuery& query, const LookupRules& rules) {
    const Text upper = UpperCase(query.idCode);
    const TextView code = ZeroTrimCode(upper, set.IsZeroTrimmed());
    const Position matching = FirstMatch(set.index, code, query.originator, rules);
    ObjectMatch match{.object = ObjectAt(set, matching)};
    if (!rules.parksResets) return match;
    // A walk tests every object up to the match and the match itself, or all of them without one.
    const Position reset = set.index.WithResetCode(code);
    match.isParked = reset != ObjectIndex::kNone && reset <= matching;
    match.isInService = match.isParked && set.index.IsAnyInService(set, code, matching, query.now);
    return match;
}

cIDCode* FindExactObject(const cTranslate& set, TextView idCode) {
    return ObjectAt(set, set.index.WithExactCode(idCode));
}

const cTypeCode* FindTypeCode(const cTranslate& set, TextView typeCode) {
    const Position position = set.index.WithTypeCode(typeCode);
    return position < set.m_TypeCodes.size() ? &set.m_TypeCodes[position] : nullptr;
}

std::optional<CallerMatch> FindCaller(const PortBinding& ownPort, std::span<PortBinding* const> ports,
                                      TextView number) {
    if (number.empty()) return std::nullopt;
    if (const auto match = FindCallerAtPort(ownPort, number)) return match;
    for (const PortBinding* port : ports) {
        if (const auto match = FindCallerAtPort(*port, number)) return match;
    }
    return std::nullopt;
}

}  // namespace nordkeep
