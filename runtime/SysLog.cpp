#include "runtime/SysLog.h"

#include "runtime/Dates.h"
#include "runtime/TrafficLog.h"

namespace nordkeep {

LogPlace PlaceOfLog(LogKind kind, bool isClient) {
    const bool isAlarm = kind == LogKind::Alarm;
    Text folder = isAlarm ? "AlarmFiles" : "LogFiles";
    return {folder + (isClient ? "_Client\\" : "\\"), isAlarm ? ".ALM" : ".LOG"};
}

void SysLog::WriteSysLog(TextView text, LogKind kind) {
    const OleDate now = clock_.Now();
    const LogRow row{FormatDate(now, "YY-MM-DD"), FormatDate(now, "HH:NN:SS"), kind, PlainLine(text)};
    const LogPlace place = PlaceOfLog(kind, isClient_);
    const Text fileName = place.folder + FormatDate(now, "YYYY-MM-DD") + place.extension;
    Text line = std::to_string(static_cast<int>(kind)) + ";" + row.date + ";" + row.time + " ;";
    line.append(row.text).append("\r\n");
    (kind == LogKind::Alarm ? alarmFile_ : file_).Append(fileName, line);
    if (listener_) listener_(row);
}

}  // namespace nordkeep
