#pragma once

#include "app/Workplace.h"
#include "platform/EventLoop.h"
#include "runtime/SysLog.h"

#include <vector>

namespace nordkeep {

/// Shows the log in the terminal, and keeps it for the window until there is one.
class LogRows {
 public:
    /// `isForSystemLog`: lines are read by the system's own log, which dates them itself.
    LogRows(SysLog& log, EventLoop& loop, bool isForSystemLog);
    ~LogRows();
    LogRows(const LogRows&) = delete;
    LogRows& operator=(const LogRows&) = delete;

    void ShowAt(Workplace& place);
    /// The place goes; what is still to be said goes to the terminal alone.
    void Leave() { place_ = nullptr; }

 private:
    void Take(const LogRow& row);
    void Flush();

    SysLog& log_;
    EventLoop& loop_;
    const bool isForSystemLog_;
    bool isFlushWaiting_ = false;
    Workplace* place_ = nullptr;
    std::vector<LogRow> early_{};
};

}  // namespace nordkeep
