#pragma once

#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

struct cAlarm;

/// The payload of the messages 6, 7 and 8: a record in the order of the wire. It carries neither m_URL, nor
/// m_RepeatedCompareTime, nor what belongs to one copy only.
Text EventPayload(const cAlarm& alarm);
/// Reads a record over `alarm`; the fields that are not carried stay. False when the payload ends before its
/// last field: what was missing is then 0, empty or never.
bool ReadEvent(TextView payload, cAlarm& alarm);

/// The front of a record, by which its receiver finds its own.
struct EventHead {
    std::int32_t filePointer = 0;
    int isStored = 0;
    int status = 0;
};
EventHead ReadEventHead(TextView payload);

}  // namespace nordkeep
