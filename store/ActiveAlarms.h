#pragma once

#include "store/Alarm.h"

#include <functional>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// Place of a record in the list of all events; a later record has a higher number. Never 0.
using EventSequence = std::uint64_t;

/// True when the new record `n` repeats the active alarm `a`.
bool IsRepeatOf(const cAlarm& a, const cAlarm& n);

/// What the record `n` does to an alarm that waits for a reset.
enum class ResetMatch {
    None,
    ByType,    // ends the alarm
    ByIdCode,  // ends the alarm as the event of another object, and takes over that object's texts
};
ResetMatch MatchReset(const cAlarm& a, const cAlarm& n);

/// Finds the partners of a new record among the active alarms without walking them.
///
/// The answers are those of a walk over all active alarms in list order. An index holds every alarm under
/// the hashes of the fields that its partners compare; whatever a look-up brings is compared in full, so
/// a collision costs time only.
class ActiveAlarms {
 public:
    /// Takes the record's present status and fields into account; to be called whenever they may have
    /// changed. `alarm` stays where it is until Remove.
    void Update(EventSequence sequence, const cAlarm& alarm);
    void Remove(EventSequence sequence);
    void Clear();

    /// The first alarm in list order that `n` repeats.
    std::optional<EventSequence> FirstRepeatPartner(const cAlarm& n) const;
    /// All waiting alarms that `n` resets, in list order.
    std::vector<EventSequence> ResetHits(const cAlarm& n) const;
    /// Whether there is any such alarm.
    bool HasResetHit(const cAlarm& n) const;
    /// The last alarm in list order that `n` resets as the event of another object.
    std::optional<EventSequence> LastHitByIdCode(const cAlarm& n) const;

 private:
    using Hash = std::uint64_t;
    struct Indexed {
        const cAlarm* alarm = nullptr;
        std::vector<Hash> hashes{};
    };
    using Bucket = std::set<EventSequence>;

    const Bucket& BucketOf(Hash hash) const;
    /// Members of the bucket that `n` resets, added to `hits`; at most `limit`.
    void CollectHits(Hash hash, const cAlarm& n, std::size_t limit, Bucket& hits) const;
    Bucket CollectHits(const cAlarm& n, std::size_t limit) const;
    void Unlink(EventSequence sequence, const std::vector<Hash>& hashes);

    std::unordered_map<Hash, Bucket> buckets_{};
    std::unordered_map<EventSequence, Indexed> indexed_{};
};

}  // namespace nordkeep
