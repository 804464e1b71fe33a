#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

/// The row of an operator's list that shows a record; belongs to the lists.
struct ListItem;

/// Values of m_Status. A file can hold any other number too; such a record counts as not acknowledged.
enum AlarmStatus : int {
    kStatusRemoved = -1,          // leaves the store; its file is deleted
    kStatusNew = 0,               // not handled
    kStatusCommented = 1,         // commented, not acknowledged
    kStatusNewWaiting = 2,        // as 0, and a reset is expected
    kStatusCommentedWaiting = 3,  // as 1, and a reset is expected
    kStatusReset = 4,             // reset received, or a confirmation message
    kStatusAcknowledged = 5,      // belongs to the old alarms
};

/// One received event, from its intake until it is archived. Priorities and codes are texts, also when they
/// hold numbers. The numbers are 16 bits wide in files and on the wire, m_FilePointer and m_AlarmId 32.
struct cAlarm {
    std::int32_t m_FilePointer = 0;  // number of the event file; below 0 for a record that has none
    bool m_IsStored = false;         // has been written by this run of the program
    int m_Status = kStatusNew;
    int m_Repeated = 0;      // -1 marks a record that repeats an older one
    int m_SentToTorvex = 0;  // 0 still to be sent, -1 done
    OleDate m_TimeStamp{};   // given by the source
    OleDate m_AckedTime{};
    OleDate m_ArrivedTime{};
    OleDate m_RepeatedCompareTime{};  // when the last repeat of this record arrived
    Text m_AlarmCodeToStore{};        // the alarm text as shown and logged
    Text m_AlarmCode{};               // as it came in
    Text m_ExtraText{};
    Text m_ProtocolType{};
    Text m_TranslatedPrio{};  // "-1": raises no alarm
    Text m_TranslatedTypeCode{};
    Text m_TranslatedIDCode{};  // the object's name
    Text m_TranslatedMapName{};
    Text m_TranslationFile{};  // the translation set that matched
    Text m_ResetTypeCode{};    // type code that resets this alarm; "*" for any restore
    Text m_Prio{};
    Text m_TypeCode{};
    Text m_IdCode{};
    Text m_SIAStatus{};
    Text m_SIAAddress{};
    Text m_SIAModifier{};
    Text m_SmallComment{};
    Text m_Originator{};
    Text m_User{"   "};  // initials of the acting operator
    Text m_PortDescription{};
    Text m_Customer{};
    Text m_LineCardNumber{};
    std::int32_t m_AlarmId = 0;
    Text m_ResetIdCode{};  // another object's code whose events reset this alarm
    Text m_ObjectInformation{};
    Text m_RawAlarmCode{};
    Text m_URL{};
    ListItem* m_ListItem = nullptr;
    int m_TranslationNumberToUse = 0;
    bool m_IsAConfirmationSMS = false;
    Text m_PortName{};     // of the port that it came in by; known in this run only
    Text m_SIADataCode{};  // first two characters of the alarm code
    bool m_TranslationIsOk = false;
    bool m_MessageIsFollowedBySpeech = false;
    int m_ZeroTrim = 0;  // not 0: leading zeros of the ID code do not count
};

/// Status 0 to 3: open to repeats and, when waiting, to resets.
inline bool IsActive(const cAlarm& alarm) {
    return alarm.m_Status >= kStatusNew && alarm.m_Status <= kStatusCommentedWaiting;
}
inline bool IsWaitingForReset(const cAlarm& alarm) {
    return alarm.m_Status == kStatusNewWaiting || alarm.m_Status == kStatusCommentedWaiting;
}
/// Belongs to the list of new alarms.
inline bool IsUnacknowledged(const cAlarm& alarm) {
    return alarm.m_Status != kStatusAcknowledged && alarm.m_Status != kStatusRemoved;
}
/// The key of the record's row in a list.
inline Text RowKey(const cAlarm& alarm) {
    return std::to_string(alarm.m_FilePointer) + "K";
}

}  // namespace nordkeep
