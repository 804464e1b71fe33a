#pragma once

#include "pipeline/EventIntake.h"
#include "platform/EventLoop.h"
#include "ports/PortConditions.h"
#include "ports/ReceivedText.h"
#include "ports/ReplyQueue.h"
#include "ports/Transport.h"
#include "ports/formats/LineFormat.h"
#include "runtime/StallWatch.h"
#include "runtime/TrafficLog.h"
#include "store/EventCommit.h"

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
    EventIntake& intake;
    EventCommit& commit;
    StallWatch& stalls;
    /// Finds the object that takes calls from a number as a sign of life; none: every caller is unknown.
    std::function<std::optional<CallerMatch>(const PortBinding& ownPort, TextView number)> findCaller{};
    ExportQueues* exports = nullptr;  // none: nothing is exported
    std::function<bool()> areAllEventsStored{};
    InetFactory* inet = nullptr;                                               // none: nothing is polled
    std::shared_ptr<CommWait> wait = std::make_shared<CommWait>(loop, clock);  // one for all ports
};

/// One configured reception channel: reads its line, lets the decoder of its format cut telegrams, hands the
/// events to the intake and answers the sender.
class cPort {
 public:
    cPort(const PortParts& parts, Text portName);
    cPort(const cPort&) = delete;
    cPort& operator=(const cPort&) = delete;

    /// Reads the settings. False, with a line in the log, for a port type or message format that is none:
    /// such a port is never opened.
    bool InitializePort();
    /// Gives the port its place among the ports of its type; 0 when there is none left.
    void SetPortIndex(int index) { portIndex_ = index; }
    int PortIndex() const { return portIndex_; }
    std::optional<PortType> Type() const { return type_; }

    /// One tick of the open timer: opens when it is to be open, closes when not, and does what the port has
    /// to do periodically. Does nothing when it is called from inside itself.
    void Tick(int tickMs, const PortConditions& conditions);
    /// One tick of the timer that polls.
    void CyclicHTTPCleanup(int tickMs, const PortConditions& conditions);
    bool IsOpen() const { return transport_ && transport_->IsOpen(); }
    void ClosePort(bool isShuttingDown);
    /// Takes in what a format still holds back, when the program ends.
    void Finish();
    void SendBytes(TextView bytes);
    /// The equipment on this line has a clock; the next tick sets it once asked for.
    bool HasClock() const { return lineFormat_ && lineFormat_->HasClock(); }
    void RequestClock() {
        if (lineFormat_) lineFormat_->RequestClock();
    }

    const Text& PortName() const { return eventPort_.PortName; }
    EventPort& Event() { return eventPort_; }
    const EventPort& Event() const { return eventPort_; }

 private:
    std::unique_ptr<Transport> NewTransport(PortType type);
    CallerLookup OwnCallerLookup() const;
    Conversation OwnConversation();
    bool IsToBeOpen(int tickMs, const PortConditions& conditions);
    bool IsDisabledByDate();
    void ReadPortDisable();
    void OpenPort(int tickMs);
    void ServicePort(int tickMs);
    ServiceTick TickOf(int tickMs) const;
    void PurgeHalfTelegram();
    void SuperviseTestTelegrams();
    void RaiseTestTelegramEvent(const Text& code);
    void NoteTraffic();

    void OnDataWaiting();
    void OnNewStream();
    void TakeChunks();
    void ServeReceived();
    void HandleStep(TelegramStep step, EventCommit::Completion whenStored = {});
    Text LabelOf(const DecodedEvent& decoded) const;

    PortParts parts_;
    EventPort eventPort_{};
    LineSettings line_{};
    SupervisionSettings supervision_{};
    std::optional<PortType> type_{};
    MessageFormat format_ = MessageFormat::Robofon;
    int portIndex_ = 0;

    std::optional<PortLog> portLog_{};
    std::unique_ptr<Transport> transport_{};
    std::unique_ptr<LineFormat> lineFormat_{};
    ReplyQueue replies_;
    ReceivedText received_{};

    FileStamp settingsStamp_{};
    Text portDisable_ = "0";
    bool isInOpen_ = false;
    bool isMuted_ = false;
    bool isContinuing_ = false;  // a later turn of the loop goes on with what waits
    bool isTestTelegramMissing_ = false;
    int reopenCountdownMs_ = 0;
    int noClientsCountdownMs_ = 0;
    int lastReceiveSecond_ = 0;  // of the day; 0 when nothing has been received
    std::int64_t lastTrafficMs_ = 0;
};

}  // namespace nordkeep
