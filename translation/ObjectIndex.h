#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <cstdint>
#include <functional>
#include <set>
#include <unordered_map>

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// The answers of a walk through the objects and types of one set, kept by key, so that a look-up costs the
/// same for ten objects and for a hundred thousand. "First" always means first in the order of the list.
///
/// It is rebuilt whenever the lists or the zero trimming of the set have changed, and told of every change
/// of a service mode.
class ObjectIndex {
 public:
    /// Place of an object or type in its list.
    using Position = std::uint32_t;
    static constexpr Position kNone = 0xFFFFFFFF;

    /// The first objects with one ID code.
    struct SameCode {
        Position any = kNone;
        Position withoutCaller = kNone;  // m_Originator is empty
        Position forAnyCaller = kNone;   // no caller, or the caller need not agree
    };

    void Rebuild(const cTranslate& set);
    void NoteServiceMode(const cIDCode& object);

    /// Keys of these are compared through the set's zero trimming: hand in the trimmed code.
    SameCode WithCode(TextView trimmedCode) const;
    Position WithCodeAndCaller(TextView trimmedCode, TextView caller) const;
    Position WithResetCode(TextView trimmedCode) const;
    /// True when one of the objects up to and including `last` that this code resets is in service.
    bool IsAnyInService(const cTranslate& set, TextView trimmedResetCode, Position last, OleDate now) const;

    Position WithExactCode(TextView code) const;
    /// The first object whose alive test may be fed by a call from this number.
    Position FedByCaller(TextView number) const;
    Position WithTypeCode(TextView typeCode) const;

 private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(TextView text) const { return std::hash<TextView>()(text); }
    };
    template <class Value>
    using ByKey = std::unordered_map<Text, Value, TextHash, std::equal_to<>>;

    void Clear();
    void AddObject(const cIDCode& object, Position position);
    static Position Find(const ByKey<Position>& places, TextView key);

    bool isZeroTrimmed_ = false;
    ByKey<SameCode> byCode_{};
    ByKey<Position> byCodeAndCaller_{};
    ByKey<Position> byExactCode_{};  // only with zero trimming, else byCode_ serves
    ByKey<Position> byReset_{};
    ByKey<std::set<Position>> servicedByReset_{};  // objects whose service mode is not 0
    ByKey<Position> byFeedingCaller_{};
    ByKey<Position> byType_{};
};

}  // namespace nordkeep
