#include "translation/Translate.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr std::size_t kTelegramWidth = 80;

bool IsTest(int test) {
    return test == 1 || test == 2;
}

struct Place {
    int start;
    int length;
};

/// Writes what fits of `part` at its place; the telegram keeps its width.
void WriteAt(Text& telegram, Place place, TextView part) {
    if (place.start < 1 || place.length < 1 || static_cast<std::size_t>(place.start) > telegram.size())
        return;
    const auto at = static_cast<std::size_t>(place.start - 1);
    const std::size_t count =
        std::min({part.size(), static_cast<std::size_t>(place.length), telegram.size() - at});
    telegram.replace(at, count, part.substr(0, count));
}

/// In a set that ignores leading zeros a short code must end where its field ends: behind it the field is
/// filled with zeros, and "123" would become "12300000".
Text CodeForField(const cTranslate& set, TextView idCode) {
    const auto width = static_cast<std::size_t>(std::max(set.m_IdCode_Format_Length, 0));
    Text code(idCode);
    if (set.IsZeroTrimmed() && code.size() < width && width <= kTelegramWidth)
        code.insert(0, width - code.size(), '0');
    return code;
}

}  // namespace

const Text& cIDCode::Schedule(int test) const {
    static const Text kNoSchedule;
    if (!IsTest(test)) return kNoSchedule;
    return test == 1 ? m_AliveTestIntervalOrTimeStamps : m_AliveTest2IntervalOrTimeStamps;
}

bool cIDCode::AliveTestHasExpired(int test, OleDate when) const {
    const OleDate expiration = GetNextAliveTestExpirationTime(test);
    return !expiration.IsNever() && expiration < when;
}

OleDate cIDCode::GetNextAliveTestExpirationTime(int test) const {
    if (!IsTest(test)) return {};
    return test == 1 ? nextExpiration_ : nextExpiration2_;
}

Text cIDCode::ReadableAliveTestIntervalOrTime(int test, TextView unit) const {
    return IsTest(test) ? ReadableSchedule(Schedule(test), unit) : Text();
}

void cIDCode::SetNextAliveTestExpirationTime(int test, OleDate when) {
    if (test == 1) nextExpiration_ = when;
    if (test == 2) nextExpiration2_ = when;
}

bool cIDCode::AliveTestIsToBeUsed(int test) const {
    return IsScheduleInUse(Schedule(test));
}

void cIDCode::CalculateNextAliveTestTime(int test, OleDate heard, AliveTestPace pace) {
    SetNextAliveTestExpirationTime(test, NextDeadline(Schedule(test), heard, pace));
}

bool IsInService(const cIDCode& object, OleDate now) {
    switch (object.m_ServiceMode) {
        case 1:
            return now < object.m_ServicePeriodEnd;
        case 2:
            return object.m_ServicePeriodBegin < now && now < object.m_ServicePeriodEnd;
        case 3:
            return true;
        default:
            return false;
    }
}

Text SyntheticTelegram(const cTranslate& set, TextView idCode, TextView typeCode) {
    Text telegram(kTelegramWidth, ' ');
    WriteAt(telegram, {set.m_IdCode_Format_StartPos, set.m_IdCode_Format_Length}, CodeForField(set, idCode));
    WriteAt(telegram, {set.m_TypeCode_Format_StartPos, set.m_TypeCode_Format_Length}, typeCode);
    telegram.resize(telegram.find_last_not_of(' ') + 1);
    std::ranges::replace(telegram, ' ', '0');
    return telegram;
}

}  // namespace nordkeep
