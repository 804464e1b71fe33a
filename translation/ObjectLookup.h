#pragma once

#include "runtime/Language.h"
#include "translation/PortBinding.h"
#include "translation/Translate.h"
#include "translation/TranslationSettings.h"

#include <optional>
#include <span>

namespace nordkeep {

/// What of the settings and the language bears on finding an object.
struct LookupRules {
    bool matchCallers = false;  // MatchCLIDIfExisting
    Text hiddenNumber{};        // the word that stands for a caller who hides the number
    bool parksResets = false;   // resets whose alarm has not arrived yet are parked
};
LookupRules MakeLookupRules(const TranslationSettings& settings, const Language& language);

/// What an event brings: its ID code as received, the caller's number or empty, and the clock at intake.
struct ObjectQuery {
    TextView idCode{};
    TextView originator{};
    OleDate now{};
};

/// What a walk through the objects of a set finds. The object stays with the set; it is not to be kept.
struct ObjectMatch {
    cIDCode* object = nullptr;  // the first that matches
    bool isParked = false;      // an object walked is reset by this ID code
    bool isInService = false;   // and one of these objects is in service
};

/// Walks the objects in order up to the first match (that one included); cost does not grow with their
/// number.
ObjectMatch MatchObject(const cTranslate& set, const ObjectQuery& query, const LookupRules& rules);

/// The first object with exactly this code; none when the set has no such object.
cIDCode* FindExactObject(const cTranslate& set, TextView idCode);

/// The first type with exactly this code; none when the set has no such type.
const cTypeCode* FindTypeCode(const cTranslate& set, TextView typeCode);

/// An object that a call keeps alive, and the protocol under which its set is bound.
struct CallerMatch {
    cTranslate* set = nullptr;
    cIDCode* object = nullptr;
    Protocol protocol{};
};

/// The first object that takes calls from this number as a sign of life: the own port first, then all ports
/// in order, protocol numbers ascending, sets and objects in order. None for an empty number.
std::optional<CallerMatch> FindCaller(const PortBinding& ownPort, std::span<PortBinding* const> ports,
                                      TextView number);

}  // namespace nordkeep
