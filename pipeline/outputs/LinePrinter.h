#pragma once

#include "platform/PrinterPort.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

#include <deque>

namespace nordkeep {

/// Prints alarms on a line printer, as fast as the printer takes them. What waits is limited, and each alarm
/// that cannot be printed costs one line in the log.
class LinePrinter {
 public:
    /// `alarmsOnPage`: behind so many a form feed; 0: none.
    LinePrinter(NativePath device, PrinterPort& port, SysLog& log, const Language& language,
                int alarmsOnPage = 0);

    /// Prints the text as it is, without a line end of its own; the code names the alarm in the log.
    void SendPRN(TextView text, const Text& alarmCode);
    bool IsConfigured() const { return !device_.empty(); }
    std::size_t WaitingCount() const { return jobs_.size(); }
    /// The last alarm could not be printed, or the printer says that it cannot print.
    bool HasFailed() const { return hasFailed_ || trouble_ != PrinterTrouble::None; }
    /// Goes on with what the printer was too busy for.
    void Tick();
    /// What still waits is given up.
    void Close();

 private:
    struct Job {
        Text text;
        Text alarmCode;
        std::size_t written = 0;
    };

    bool WriteOn();
    void DropFront();
    void NoteFailure(const Text& alarmCode);
    void NoteTrouble(PrinterTrouble trouble);

    NativePath device_;
    PrinterPort& port_;
    SysLog& log_;
    const Language& language_;
    std::deque<Job> jobs_{};
    std::size_t waiting_ = 0;  // bytes of the jobs
    bool hasFailed_ = false;
    PrinterTrouble trouble_ = PrinterTrouble::None;  // the last one told
    int alarmsOnPage_;
    int alarmsSincePage_ = 0;
};

}  // namespace nordkeep
