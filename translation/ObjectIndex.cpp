#include "translation/ObjectIndex.h"

#include "translation/Translate.h"

#include <algorithm>

namespace nordkeep {
namespace {

using Position = ObjectIndex::Position;

void KeepFirst(Position& place, Position position) {
    place = std::min(place, position);
}

/// One key of a code and a caller, in which neither can run into the other.
Text CodeAndCaller(TextView code, TextView caller) {
    return std::to_string(code.size()).append(" ").append(code).append(caller);
}

}  // namespace

void ObjectIndex::Clear() {
    byCode_.clear();
    byCodeAndCaller_.clear();
    byExactCode_.clear();
    byReset_.clear();
    servicedByReset_.clear();
    byFeedingCaller_.clear();
    byType_.clear();
}

void ObjectIndex::Rebuild(const cTranslate& set) {
    Clear();
    isZeroTrimmed_ = set.IsZeroTrimmed();
    byCode_.reserve(set.m_IdCodes.size());
    Position position = 0;
    for (const auto& object : set.m_IdCodes) {
        object->position_ = position;
        AddObject(*object, position++);
    }
    position = 0;
    for (const cTypeCode& type : set.m_TypeCodes) byType_.try_emplace(type.m_TypeCode, position++);
}

void ObjectIndex::AddObject(const cIDCode& object, Position position) {
    const TextView code = ZeroTrimCode(object.m_IdCode, isZeroTrimmed_);
    const bool hasCaller = !object.m_Originator.empty();
    const bool mustAgree = hasCaller && object.m_MatchCLIDToAcceptMessage;
    SameCode& same = byCode_[Text(code)];
    KeepFirst(same.any, position);
    if (!hasCaller) KeepFirst(same.withoutCaller, position);
    if (!mustAgree) KeepFirst(same.forAnyCaller, position);
    if (mustAgree) byCodeAndCaller_.try_emplace(CodeAndCaller(code, object.m_Originator), position);
    if (isZeroTrimmed_) byExactCode_.try_emplace(object.m_IdCode, position);
    if (object.m_MatchCLIDForAliveTest && hasCaller)
        byFeedingCaller_.try_emplace(object.m_Originator, position);
    if (!object.m_ResetIdCode.empty()) {
        byReset_.try_emplace(Text(ZeroTrimCode(object.m_ResetIdCode, isZeroTrimmed_)), position);
    }
    NoteServiceMode(object);
}

void ObjectIndex::NoteServiceMode(const cIDCode& object) {
    if (object.m_ResetIdCode.empty() || object.position_ == kNone) return;
    const Text key(ZeroTrimCode(object.m_ResetIdCode, isZeroTrimmed_));
    if (object.m_ServiceMode != 0) {
        servicedByReset_[key].insert(object.position_);
    } else if (const auto serviced = servicedByReset_.find(key); serviced != servicedByReset_.end()) {
        serviced->second.erase(object.position_);
        if (serviced->second.empty()) servicedByReset_.erase(serviced);
    }
}

Position ObjectIndex::Find(const ByKey<Position>& places, TextView key) {
    const auto found = places.find(key);
    return found == places.end() ? kNone : found->second;
}

ObjectIndex::SameCode ObjectIndex::WithCode(TextView trimmedCode) const {
    const auto found = byCode_.find(trimmedCode);
    return found == byCode_.end() ? SameCode{} : found->second;
}

Position ObjectIndex::WithCodeAndCaller(TextView trimmedCode, TextView caller) const {
    return byCodeAndCaller_.empty() ? kNone : Find(byCodeAndCaller_, CodeAndCaller(trimmedCode, caller));
}

Position ObjectIndex::WithResetCode(TextView trimmedCode) const {
    return Find(byReset_, trimmedCode);
}

bool ObjectIndex::IsAnyInService(const cTranslate& set, TextView trimmedResetCode, Position last,
                                 OleDate now) const {
    const auto serviced = servicedByReset_.find(trimmedResetCode);
    if (serviced == servicedByReset_.end()) return false;
    const auto behind = serviced->second.upper_bound(last);
    return std::any_of(serviced->second.begin(), behind,
                       [&](Position position) { return IsInService(*set.m_IdCodes[position], now); });
}

Position ObjectIndex::WithExactCode(TextView code) const {
    return isZeroTrimmed_ ? Find(byExactCode_, code) : WithCode(code).any;
}

Position ObjectIndex::FedByCaller(TextView number) const {
    return Find(byFeedingCaller_, number);
}

Position ObjectIndex::WithTypeCode(TextView typeCode) const {
    return Find(byType_, typeCode);
}

}  // namespace nordkeep
