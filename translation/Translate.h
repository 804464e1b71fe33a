#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"
#include "runtime/Fields.h"
#include "translation/AliveTestSchedule.h"
#include "translation/ObjectIndex.h"

#include <memory>
#include <variant>
#include <vector>

namespace nordkeep {

/// One event type of a set.
struct cTypeCode {
    Text m_TypeCode{};
    int m_Prio = 0;
    Text m_Name{};
    Text m_ResetTypeCode{};
};

/// One supervised object of a set. The codes that it is found by (ID, caller, reset) change only in a load,
/// which rebuilds the set's index; the service fields change through StoreServicePeriod.
struct cIDCode {
    Text m_IdCode{};  // upper case
    Text m_ObjectName{};
    std::monostate m_AliveTestExpire{};  // carries nothing
    OleDate m_LastIncomingEvent{};
    Text m_MapName{};
    int m_ServiceMode = 0;  // see ServiceMode
    OleDate m_ServicePeriodBegin{};
    OleDate m_ServicePeriodEnd{};
    bool m_AliveTestIntervalHasExceeded = false;  // test 1 has failed
    Text m_Originator{};                          // caller's number, empty for none
    Text m_RBM600ExportAlarmCode{};
    Text m_RBM600ExportProtocol{};
    Text m_Customer{};
    bool m_MatchCLIDToAcceptMessage = false;
    bool m_MatchCLIDForAliveTest = false;
    Text m_ResetIdCode{};
    bool m_AliveTest2IntervalHasExceeded = false;
    Text m_AliveTestIntervalOrTimeStamps{};
    Text m_AliveTest2IntervalOrTimeStamps{};
    bool m_IsToBeDeleted = false;  // its row has not been seen in the running reload

    /// For all of these `test` is 1 or 2; any other number yields false, never or empty, and sets nothing.
    bool AliveTestHasExpired(int test, OleDate when) const;
    OleDate GetNextAliveTestExpirationTime(int test) const;
    Text ReadableAliveTestIntervalOrTime(int test, TextView unit) const;
    void SetNextAliveTestExpirationTime(int test, OleDate when);
    bool AliveTestIsToBeUsed(int test) const;
    /// Sets the expiration that follows from a sign of life at `heard`.
    void CalculateNextAliveTestTime(int test, OleDate heard, AliveTestPace pace);

    /// The failed flag of a test, for code that serves both tests; the second answers for any other number.
    bool& FailedFlag(int test) {
        return test == 1 ? m_AliveTestIntervalHasExceeded : m_AliveTest2IntervalHasExceeded;
    }

 private:
    friend class ObjectIndex;

    const Text& Schedule(int test) const;

    OleDate nextExpiration_{};
    OleDate nextExpiration2_{};
    ObjectIndex::Position position_ = ObjectIndex::kNone;  // in the set's list
};

/// Where the parts of an alarm code stand. Positions count from 1.
struct TelegramFormat {
    int m_IdCode_Format_StartPos = 1;
    int m_IdCode_Format_Length = 0;
    int m_TypeCode_Format_StartPos = 1;
    int m_TypeCode_Format_Length = 0;
    int m_Prio_Format_StartPos = 1;
    int m_Prio_Format_Length = 0;
    int m_Group_Format_StartPos = 0;
    int m_Group_Format_Length = 0;
    int m_Zone_Format_StartPos = 0;
    int m_Zone_Format_Length = 0;
    int m_Padding_Count = 0;  // 0 for no padding
    int m_Padding_Character = 0;
};

/// One translation set: a name, its files, and what they hold.
struct cTranslate : TelegramFormat {
    Text m_FileName{};
    OleDate m_FileTimeStampIDCode{};
    OleDate m_FileTimeStampTypeCode{};
    int m_ZeroTrim = 0;                                 // not 0: leading zeros of ID codes do not count
    bool m_ThisIsADuplicateTranslation = false;         // used by nothing
    std::vector<std::unique_ptr<cIDCode>> m_IdCodes{};  // in file order
    std::vector<cTypeCode> m_TypeCodes{};               // in file order
    bool m_IsToBeDeleted = false;  // to be loaded at the next look-up, or removed when no port asks for it

    ObjectIndex index{};

    bool IsZeroTrimmed() const { return m_ZeroTrim != 0; }
};

/// True when events of the object are only logged at this moment.
bool IsInService(const cIDCode& object, OleDate now);

/// A telegram of the system's own about an object: ID code and type at the set's positions, zeros elsewhere.
Text SyntheticTelegram(const cTranslate& set, TextView idCode, TextView typeCode);

}  // namespace nordkeep
