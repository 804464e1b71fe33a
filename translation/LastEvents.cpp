#include "translation/LastEvents.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/SetRows.h"

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";

TextView Flag(bool isOn) {
    return isOn ? "-1" : "0";
}

bool HasState(const cIDCode& object) {
    return object.AliveTestIsToBeUsed(1) || object.AliveTestIsToBeUsed(2) ||
           !object.m_LastIncomingEvent.IsNever() || object.m_ServiceMode != 0;
}

void AppendLine(Text& lines, const cIDCode& object) {
    lines.append(object.m_IdCode).append(";");
    lines.append(CompactTime(object.m_LastIncomingEvent)).append(";");
    lines.append(CompactTime(object.GetNextAliveTestExpirationTime(1))).append(";");
    lines.append(Flag(object.m_AliveTestIntervalHasExceeded)).append(";");
    lines.append(std::to_string(object.m_ServiceMode)).append(";");
    lines.append(CompactTime(object.m_ServicePeriodBegin)).append(";");
    lines.append(CompactTime(object.m_ServicePeriodEnd)).append(";");
    lines.append(CompactTime(object.GetNextAliveTestExpirationTime(2))).append(";");
    lines.append(Flag(object.m_AliveTest2IntervalHasExceeded)).append(kLineEnd);
}

}  // namespace

Text WriteLastEvents(const cTranslate& set) {
    Text lines;
    for (const auto& object : set.m_IdCodes) {
        if (HasState(*object)) AppendLine(lines, *object);
    }
    return lines;
}

std::vector<LastEventsLine> ReadLastEvents(TextView content) {
    std::vector<LastEventsLine> lines;
    for (const TextView line : Lines(content)) {
        const auto fields = RowFields<9>(line);
        lines.push_back({.idCode = Text(fields[0]),
                         .lastIncomingEvent = ParseCompactTime(fields[1]),
                         .expiration = ParseCompactTime(fields[2]),
                         .hasFailed = IsTrue(fields[3]),
                         .serviceMode = LeadingInt16(fields[4]),
                         .servicePeriodBegin = ParseCompactTime(fields[5]),
                         .servicePeriodEnd = ParseCompactTime(fields[6]),
                         .expiration2 = ParseCompactTime(fields[7]),
                         .hasFailed2 = IsTrue(fields[8])});
    }
    return lines;
}

Text LastEventsFileName(TextView set) {
    return Text(kLastEventsFolder).append("\\").append(set).append(".LastEvents");
}

}  // namespace nordkeep
