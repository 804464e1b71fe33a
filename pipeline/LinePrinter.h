#pragma once

#include "platform/PrinterPort.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

#include <deque>

namespace nordkeep {

/// Prints each alarm on a line printer, as fast as the printer takes it. What waits is limited; an alarm that
/// cannot be printed costs one line in the log.
class LinePrinter {
 public:
    LinePrinter(NativePath device, PrinterPort& port, SysLog& log, const Language& language);

    /// Hands a text to the printer; the code names the alarm in the log. 0 when it is taken.
    int SendPRN(TextView text, const Text& alarmCode);
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
    void NoteFailure(const Text& alarmCode);

    NativePath device_;
    PrinterPort& port_;
    SysLog& log_;
    const Language& language_;
    std::deque<Job> jobs_{};
    std::size_t waiting_ = 0;  // bytes of the jobs
};

}  // namespace nordkeep
