#include "app/LogRows.h"

#include <cstdio>
#include <utility>

namespace nordkeep {
namespace {

/// A line of the log on standard output. The system's own log goes by a number in front of each: 3 error,
/// 4 warning, 6 information.
void PrintRow(const LogRow& row, bool isForSystemLog) {
    const std::string text = ToUtf8(row.text);
    if (!isForSystemLog) {
        std::printf("%s %s %d %s\n", row.date.c_str(), row.time.c_str(), static_cast<int>(row.kind),
                    text.c_str());
        return;
    }
    const int level = row.kind == LogKind::Failure ? 3 : row.kind == LogKind::Oddity ? 4 : 6;
    std::printf("<%d>%s\n", level, text.c_str());
}

}  // namespace

LogRows::LogRows(SysLog& log, EventLoop& loop, bool isForSystemLog)
    : log_(log), loop_(loop), isForSystemLog_(isForSystemLog) {
    log_.SetRowListener([this](const LogRow& row) { Take(row); });
}

LogRows::~LogRows() {
    log_.SetRowListener({});
    Flush();
}

void LogRows::ShowAt(Workplace& place) {
    place_ = &place;
    for (const LogRow& row : std::exchange(early_, {})) place.NoteLogRow(row);
}

void LogRows::Take(const LogRow& row) {
    PrintRow(row, isForSystemLog_);
    // Of alarms there are many in a turn.
    if (row.kind != LogKind::Alarm) {
        Flush();
    } else if (!std::exchange(isFlushWaiting_, true)) {
        loop_.PostAtEnd([this] { Flush(); });
    }
    place_ ? place_->NoteLogRow(row) : early_.push_back(row);
}

void LogRows::Flush() {
    isFlushWaiting_ = false;
    std::fflush(stdout);
}

}  // namespace nordkeep
