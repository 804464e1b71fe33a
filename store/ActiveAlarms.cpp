#include "store/ActiveAlarms.h"

#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <initializer_list>

namespace nordkeep {
namespace {

// Numbers at which partners are compared in a way of their own.
constexpr int kSIA = NumberOf(Protocol::SIA);
constexpr int kContactID = NumberOf(Protocol::ContactID);
constexpr TextView kRestoreQualifier = "3";

/// What a hash stands for; the same texts in another role must not meet.
enum class KeyKind : std::uint64_t {
    Repeat,
    RepeatSIA,
    RepeatContactID,
    ResetSIA,
    ResetContactID,
    ResetType,
    ResetIdCode
};

std::uint64_t HashOf(KeyKind kind, std::initializer_list<TextView> parts) {
    std::uint64_t hash = static_cast<std::uint64_t>(kind) + 1;
    for (const TextView part : parts) {
        hash = (hash ^ std::hash<TextView>()(part)) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 29;
    }
    return hash;
}

std::uint64_t RepeatHash(KeyKind kind, TextView trimmedCode, const cAlarm& alarm) {
    const bool isByAddress = kind != KeyKind::Repeat;
    return HashOf(kind, {trimmedCode, alarm.m_TranslationFile, alarm.m_ProtocolType, alarm.m_TypeCode,
                         isByAddress ? TextView(alarm.m_SIAAddress) : TextView(),
                         kind == KeyKind::RepeatSIA ? TextView(alarm.m_SIADataCode) : TextView()});
}

KeyKind RepeatKindOf(const cAlarm& n) {
    if (n.m_TranslationNumberToUse == kSIA) return KeyKind::RepeatSIA;
    return n.m_TranslationNumberToUse == kContactID ? KeyKind::RepeatContactID : KeyKind::Repeat;
}

void AddRepeatHashes(const cAlarm& a, TextView code, std::vector<std::uint64_t>& hashes) {
    const TextView trimmed = ZeroTrimCode(code, a.m_ZeroTrim != 0);
    for (const KeyKind kind : {KeyKind::Repeat, KeyKind::RepeatSIA, KeyKind::RepeatContactID}) {
        hashes.push_back(RepeatHash(kind, trimmed, a));
    }
}

/// The hashes under which a record with this code in `n.m_IdCode` looks for `a`.
void AddResetHashes(const cAlarm& a, TextView code, std::vector<std::uint64_t>& hashes) {
    const TextView file = a.m_TranslationFile;
    hashes.push_back(HashOf(KeyKind::ResetSIA, {code, file, a.m_ResetTypeCode, a.m_SIAAddress}));
    if (a.m_ResetTypeCode.empty()) return;
    hashes.push_back(HashOf(KeyKind::ResetContactID, {code, file, a.m_SIAAddress}));
    hashes.push_back(HashOf(KeyKind::ResetType, {code, file, a.m_ResetTypeCode}));
}

std::vector<std::uint64_t> HashesOf(const cAlarm& a) {
    std::vector<std::uint64_t> hashes;
    if (!IsActive(a)) return hashes;
    const bool hasOtherCode = !a.m_ResetIdCode.empty();
    AddRepeatHashes(a, a.m_IdCode, hashes);
    if (hasOtherCode) AddRepeatHashes(a, a.m_ResetIdCode, hashes);
    if (!IsWaitingForReset(a)) return hashes;
    AddResetHashes(a, a.m_IdCode, hashes);
    if (!hasOtherCode) return hashes;
    AddResetHashes(a, a.m_ResetIdCode, hashes);
    hashes.push_back(HashOf(KeyKind::ResetIdCode, {a.m_ResetIdCode, a.m_TranslationFile}));
    return hashes;
}

bool IsSameSender(const cAlarm& a, const cAlarm& n) {
    return a.m_IdCode == n.m_IdCode || (!a.m_ResetIdCode.empty() && a.m_ResetIdCode == n.m_IdCode);
}

ResetMatch MatchBySender(const cAlarm& a, const cAlarm& n) {
    if (!a.m_ResetIdCode.empty() && a.m_ResetIdCode == n.m_IdCode) return ResetMatch::ByIdCode;
    const bool isByType = !a.m_ResetTypeCode.empty() && a.m_ResetTypeCode == n.m_TypeCode;
    return isByType ? ResetMatch::ByType : ResetMatch::None;
}

}  // namespace

bool IsRepeatOf(const cAlarm& a, const cAlarm& n) {
    const TextView code = ZeroTrimCode(n.m_IdCode, n.m_ZeroTrim != 0);
    const bool isSameCode =
        ZeroTrimCode(a.m_IdCode, a.m_ZeroTrim != 0) == code ||
        (!a.m_ResetIdCode.empty() && ZeroTrimCode(a.m_ResetIdCode, a.m_ZeroTrim != 0) == code);
    const bool isSameKind = a.m_TranslationFile == n.m_TranslationFile &&
                            a.m_ProtocolType == n.m_ProtocolType && a.m_TypeCode == n.m_TypeCode;
    if (!IsActive(a) || !isSameCode || !isSameKind) return false;
    const KeyKind kind = RepeatKindOf(n);
    if (kind == KeyKind::Repeat) return true;
    if (kind == KeyKind::RepeatSIA && a.m_SIADataCode != n.m_SIADataCode) return false;
    return a.m_SIAAddress == n.m_SIAAddress;
}

ResetMatch MatchReset(const cAlarm& a, const cAlarm& n) {
    const bool isRelevant =
        IsWaitingForReset(a) && a.m_TranslationFile == n.m_TranslationFile && IsSameSender(a, n);
    if (!isRelevant) return ResetMatch::None;
    const bool isSameAddress = a.m_SIAAddress == n.m_SIAAddress;
    switch (n.m_TranslationNumberToUse) {
        case kSIA:
            return isSameAddress && a.m_ResetTypeCode == n.m_SIADataCode ? ResetMatch::ByType
                                                                         : ResetMatch::None;
        case kContactID:
            return isSameAddress && !a.m_ResetTypeCode.empty() && n.m_Prio == kRestoreQualifier
                       ? ResetMatch::ByType
                       : ResetMatch::None;
        default:
            return MatchBySender(a, n);
    }
}

void ActiveAlarms::Update(EventSequence sequence, const cAlarm& alarm) {
    std::vector<Hash> hashes = HashesOf(alarm);
    if (const auto known = indexed_.find(sequence); known != indexed_.end()) {
        if (known->second.hashes == hashes) return;
        Unlink(sequence, known->second.hashes);
        indexed_.erase(known);
    }
    if (hashes.empty()) return;
    for (const Hash hash : hashes) buckets_[hash].insert(sequence);
    indexed_[sequence] = {&alarm, std::move(hashes)};
}

void ActiveAlarms::Remove(EventSequence sequence) {
    const auto known = indexed_.find(sequence);
    if (known == indexed_.end()) return;
    Unlink(sequence, known->second.hashes);
    indexed_.erase(known);
}

void ActiveAlarms::Clear() {
    buckets_.clear();
    indexed_.clear();
}

void ActiveAlarms::Unlink(EventSequence sequence, const std::vector<Hash>& hashes) {
    for (const Hash hash : hashes) {
        const auto bucket = buckets_.find(hash);
        if (bucket == buckets_.end()) continue;
        bucket->second.erase(sequence);
        if (bucket->second.empty()) buckets_.erase(bucket);
    }
}

const ActiveAlarms::Bucket& ActiveAlarms::BucketOf(Hash hash) const {
    static const Bucket kNone;
    const auto bucket = buckets_.find(hash);
    return bucket == buckets_.end() ? kNone : bucket->second;
}

std::optional<EventSequence> ActiveAlarms::FirstRepeatPartner(const cAlarm& n) const {
    const Bucket& bucket =
        BucketOf(RepeatHash(RepeatKindOf(n), ZeroTrimCode(n.m_IdCode, n.m_ZeroTrim != 0), n));
    const auto found = std::find_if(bucket.begin(), bucket.end(), [&](EventSequence sequence) {
        return IsRepeatOf(*indexed_.at(sequence).alarm, n);
    });
    if (found == bucket.end()) return std::nullopt;
    return *found;
}

void ActiveAlarms::CollectHits(Hash hash, const cAlarm& n, std::size_t limit, Bucket& hits) const {
    for (const EventSequence sequence : BucketOf(hash)) {
        if (hits.size() >= limit) return;
        if (MatchReset(*indexed_.at(sequence).alarm, n) != ResetMatch::None) hits.insert(sequence);
    }
}

ActiveAlarms::Bucket ActiveAlarms::CollectHits(const cAlarm& n, std::size_t limit) const {
    const TextView code = n.m_IdCode;
    const TextView file = n.m_TranslationFile;
    Bucket hits;
    switch (n.m_TranslationNumberToUse) {
        case kSIA:
            CollectHits(HashOf(KeyKind::ResetSIA, {code, file, n.m_SIADataCode, n.m_SIAAddress}), n, limit,
                        hits);
            break;
        case kContactID:
            if (n.m_Prio != kRestoreQualifier) break;
            CollectHits(HashOf(KeyKind::ResetContactID, {code, file, n.m_SIAAddress}), n, limit, hits);
            break;
        default:
            CollectHits(HashOf(KeyKind::ResetType, {code, file, n.m_TypeCode}), n, limit, hits);
            CollectHits(HashOf(KeyKind::ResetIdCode, {code, file}), n, limit, hits);
    }
    return hits;
}

std::vector<EventSequence> ActiveAlarms::ResetHits(const cAlarm& n) const {
    const Bucket hits = CollectHits(n, SIZE_MAX);
    return {hits.begin(), hits.end()};
}

bool ActiveAlarms::HasResetHit(const cAlarm& n) const {
    return !CollectHits(n, 1).empty();
}

std::optional<EventSequence> ActiveAlarms::LastHitByIdCode(const cAlarm& n) const {
    const Bucket& bucket = BucketOf(HashOf(KeyKind::ResetIdCode, {n.m_IdCode, n.m_TranslationFile}));
    const auto found = std::find_if(bucket.rbegin(), bucket.rend(), [&](EventSequence sequence) {
        return MatchReset(*indexed_.at(sequence).alarm, n) == ResetMatch::ByIdCode;
    });
    if (found == bucket.rend()) return std::nullopt;
    return *found;
}

}  // namespace nordkeep
