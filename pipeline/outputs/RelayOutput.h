#pragma once

#include "platform/MSComm.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

#include <memory>

namespace nordkeep {

/// The relay that alarms operate: on the control lines of a serial line of its own.
struct RelayWiring {
    int port = -1;  // COM number; below 1: no relay
    Text device{};  // the device file of that line
    bool isRaisedForAlarms = true;
    int holdSeconds = 10;
};

/// Holds the relay for some time behind each request, counted in ticks of the system timer, and keeps it at
/// rest else. A line that cannot be operated costs one line in the log until it can again.
class RelayOutput {
 public:
    RelayOutput(RelayWiring wiring, SerialFactory& lines, SysLog& log, const Language& language);

    bool IsConfigured() const { return wiring_.port >= 1; }
    void Request() { isRequested_ = true; }
    /// The line of the relay cannot be operated at present.
    bool HasFailed() const { return isFailureLogged_; }
    int Port() const { return wiring_.port; }
    void Tick(int intervalMs);
    /// Brings the relay to rest and lets the line go.
    void Close();

 private:
    bool IsDrawn() const { return ticksLeft_ > 0; }
    void Operate(int intervalMs);
    bool SetLevel();

    RelayWiring wiring_;
    SysLog& log_;
    const Language& language_;
    std::unique_ptr<MSComm> line_;
    bool isRequested_ = false;
    std::int64_t ticksLeft_ = 0;
    bool isLevelSet_ = false;  // the line has the level that it is to have
    int retryLeftMs_ = 0;
    bool isFailureLogged_ = false;
};

}  // namespace nordkeep
