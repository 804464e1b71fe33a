#pragma once

#include "ports/ExportQueues.h"
#include "ports/PortCallers.h"
#include "ports/PortConditions.h"
#include "ports/PortSettings.h"
#include "ports/PortSteps.h"
#include "ports/Reception.h"
#include "ports/collectors/CommWait.h"

namespace nordkeep {

/// What a port needs of the rest of the system.
struct PortParts {
    const FileTree& dataFolder;
    const Settings& settings;
    const Language& language;
    SysLog& log;
    TrafficLog& trafficLog;
    const Clock& clock;
    EventLoop& loop;
    SocketFactory& sockets;
    SerialFactory& serial;
    InetFactory& inet;
    EventIntake& intake;
    EventCommit& commit;
    const StoredEvents& stored;
    StallWatch& stalls;
    ExportQueues& exports;
    CommWait& wait;  // one for all ports
};

/// One configured reception channel: decides when it is open, supervises that it works, and has what collects
/// its events opened, closed and ticked.
class cPort {
 public:
    cPort(const PortParts& parts, const PortList& allPorts, Text portName);
    cPort(const cPort&) = delete;
    cPort& operator=(const cPort&) = delete;

    /// False, with a line in the log, for a port type or message format that is none, or that do not go
    /// together: such a port is never opened.
    bool InitializePort();
    /// Gives the port its place among the ports of its type; 0 when there is none left.
    void SetPortIndex(int index) { portIndex_ = index; }
    int PortIndex() const { return portIndex_; }
    /// None for a port that is not usable.
    std::optional<PortType> Type() const { return collector_ ? type_ : std::nullopt; }

    /// One tick of the open timer: opens when it is to be open, closes when not, and does what the port has
    /// to do periodically. Does nothing when it is called from inside itself.
    void Tick(int tickMs, const PortConditions& conditions);
    /// One tick of the timer that polls.
    void CyclicHTTPCleanup(int tickMs, const PortConditions& conditions);
    bool IsOpen() const { return collector_ && collector_->IsOpen(); }
    void ClosePort(bool isShuttingDown);
    /// Closed by hand, until it is let go again.
    void Hold(bool isHeld) { isHeld_ = isHeld; }
    bool IsHeld() const { return isHeld_; }
    LineFigures Figures() const { return tally_.Figures(); }
    /// The senders that share this line and are told apart, by name.
    std::vector<LineAccount> Accounts() const {
        return reception_ ? reception_->Accounts() : std::vector<LineAccount>();
    }
    const PortTotals& Totals() const { return steps_.Totals(); }
    /// Takes in what a format still holds back, when the program ends.
    void Finish();
    /// Its settings file is another one than when the port was made, or gone; one that cannot be read at the
    /// moment is not.
    bool HasOtherSettingsNow() const;
    /// Behind a crash: holds back again what was held back then, or makes its event.
    void TakeUp(const KeptTelegram& kept);
    /// Sends on the line of the port; a port without one sends nothing.
    void SendBytes(TextView bytes);
    /// The equipment on this line has a clock; the next tick sets it once asked for.
    bool HasClock() const { return reception_ && format_ == MessageFormat::GoogolT1; }
    void RequestClock();

    const Text& PortName() const { return eventPort_.PortName; }
    EventPort& Event() { return eventPort_; }
    const EventPort& Event() const { return eventPort_; }

 private:
    void MakeCollectorOf(PortType type, MessageFormat format);
    void MakeModem(PortType type);
    void MakeReception(PortType type, MessageFormat format);
    LineParts PartsOfLine();
    int MostCallers(PortType type, MessageFormat format) const;

    bool IsToBeOpen(int tickMs, const PortConditions& conditions);
    bool IsDisabledByDate();
    void StayClosed(LineState state, bool isShuttingDown);
    LineState StateNow(const FarEnd& end) const;
    void ReadPortDisable();
    void OpenPort(int tickMs);
    void ServicePort(int tickMs);

    PortParts parts_;
    LineSettings lineSettings_;
    PortSettings settings_;
    EventPort eventPort_;
    Text settingsText_;  // of its file, when it was made
    std::optional<PortType> type_;
    std::optional<MessageFormat> format_;
    PortLog log_;
    TestTelegrams tests_;
    PortTally tally_;
    PortSteps steps_;
    PortCallers callers_;

    std::unique_ptr<Collector> collector_{};
    Line* line_ = nullptr;            // of the collector; none where it has no line
    Reception* reception_ = nullptr;  // the collector, where telegrams come on a line

    int portIndex_ = 0;
    FileStamp settingsStamp_{};
    Text portDisable_ = "0";
    bool isHeld_ = false;
    bool isInOpen_ = false;
    int reopenCountdownMs_ = 0;
    int noClientsCountdownMs_ = 0;
};

}  // namespace nordkeep
