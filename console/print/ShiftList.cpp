#include "console/print/ShiftList.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"

namespace nordkeep {
namespace {

constexpr int kCaptionOpenAlarms = 3751;
constexpr int kCaptionInService = 3752;
constexpr int kCaptionFailed = 3753;
constexpr int kCaptionLogUntil = 3411;
constexpr int kCaptionLogOnly = 3413;

Text NameOf(const cIDCode& object) {
    return object.m_ObjectName.empty() ? object.m_IdCode : object.m_IdCode + " " + object.m_ObjectName;
}

}  // namespace

ShiftList::Part ShiftList::OpenAlarms() const {
    Part part{.heading = needs_.captions(kCaptionOpenAlarms)};
    const EventList& events = needs_.store.Events();
    for (const EventSequence at : events.Unacknowledged()) {
        const cAlarm& alarm = *events.Find(at);
        const int word = kCaptionFirstStatus + std::clamp(alarm.m_Status, 0, 5);
        part.lines.push_back(GeneralDate(alarm.m_ArrivedTime) + "   " + needs_.captions(word) + "   " +
                             alarm.m_TranslatedIDCode + "   " + alarm.m_TranslatedTypeCode + "   " +
                             alarm.m_AlarmCodeToStore);
    }
    return part;
}

template <class Picks>
ShiftList::Part ShiftList::Objects(int heading, Picks picks) const {
    Part part{.heading = needs_.captions(heading)};
    for (const auto& set : needs_.translations.Sets()) {
        for (const auto& object : set->m_IdCodes) {
            if (const Text why = picks(*object); !why.empty()) {
                part.lines.push_back(set->m_FileName + "   " + NameOf(*object) + "   " + why);
            }
        }
    }
    return part;
}

std::vector<ShiftList::Part> ShiftList::Parts() const {
    const OleDate now = needs_.clock.Now();
    const auto inService = [&](const cIDCode& object) -> Text {
        if (!IsInService(object, now)) return {};
        return object.m_ServiceMode == 3
                   ? needs_.captions(kCaptionLogOnly)
                   : needs_.captions(kCaptionLogUntil, {GeneralDate(object.m_ServicePeriodEnd)});
    };
    const auto failed = [&](const cIDCode& object) -> Text {
        const bool hasFailed =
            object.m_AliveTestIntervalHasExceeded || object.m_AliveTest2IntervalHasExceeded;
        if (!hasFailed || IsInService(object, now)) return {};
        return needs_.captions(object.m_AliveTestIntervalHasExceeded ? kCaptionTestFailed
                                                                     : kCaptionTest2Failed);
    };
    return {OpenAlarms(), Objects(kCaptionInService, inService), Objects(kCaptionFailed, failed)};
}

PrintDocument ShiftList::DocumentOf(const std::vector<Part>& parts) const {
    PrintDocument document{
        .title = needs_.captions(kCaptionShiftTitle) + " " + GeneralDate(needs_.clock.Now()),
        .look = needs_.printerSettings};
    for (const Part& part : parts) {
        document.lines.push_back(part.heading);
        if (part.lines.empty()) document.lines.push_back("   " + needs_.captions(kCaptionNoLines));
        for (const Text& line : part.lines) document.lines.push_back("   " + line);
        document.lines.emplace_back();
    }
    return document;
}

}  // namespace nordkeep
