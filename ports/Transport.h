#pragma once

#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/FileTree.h"
#include "platform/Inet.h"
#include "platform/MSComm.h"
#include "platform/Winsock.h"
#include "ports/PortLog.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/TrafficLog.h"

#include <functional>
#include <memory>

namespace nordkeep {

/// What a line tells its port.
struct TransportEvents {
    std::function<void()> dataWaiting{};  // can nest
    std::function<void()> newStream{};    // what has been received so far belongs to a line that is gone
    /// A line that makes its events by itself hands them over, and is told later whether all are stored.
    std::function<void(TelegramStep step, std::function<void(bool isStored)> whenStored)> stepReady{};
    /// Bytes that went in or out by another way than Take and Send.
    std::function<void(TextView bytes, TrafficDirection direction)> traffic{};
};

/// A tick of a line that works by itself.
struct PollTick {
    int tickMs = 0;
    bool mayBegin = false;  // the port is to be open
    bool isMuted = false;
};

/// The line of a port: how it is opened, read and written. The port decides when.
class Transport {
 public:
    virtual ~Transport() = default;
    virtual bool IsOpen() const = 0;
    /// One attempt to open, with its log line.
    virtual void Open() = 0;
    virtual void Close(bool isShuttingDown) = 0;
    /// Everything that has arrived, on UDP one datagram; empty when nothing waits.
    virtual Text Take() = 0;
    /// True when somebody is at the other end, as far as the line can tell.
    virtual bool CanSend() const = 0;
    /// False when nothing could be sent.
    virtual bool Send(TextView bytes) = 0;
    /// Hangs up once everything sent so far has left; only a line that is called does that.
    virtual void HangUpWhenSent() {}
    /// One tick of a line that asks for its events.
    virtual void CyclicHTTPCleanup(const PollTick&) {}
    /// What a line does by itself at each tick of its port.
    virtual void Service(const PollTick&) {}
};

/// What transports are made from.
struct TransportParts {
    SocketFactory& sockets;
    SerialFactory& serial;
    const Settings& settings;
    const Language& language;
    const Clock& clock;
    const FileTree& dataFolder;
    EventLoop& loop;
    MessageFormat format;
    std::function<bool()> areAllEventsStored{};  // none: not known
    InetFactory* inet = nullptr;                 // none: nothing is polled
};

/// The transport of a port; none for a type that has none.
std::unique_ptr<Transport> MakeTransport(PortType type, const TransportParts& parts, PortLog& log,
                                         TransportEvents events);

std::unique_ptr<Transport> MakeSerialTransport(const TransportParts& parts, PortLog& log,
                                               TransportEvents events);
std::unique_ptr<Transport> MakeTcpClientTransport(const TransportParts& parts, PortLog& log,
                                                  TransportEvents events);
std::unique_ptr<Transport> MakeTcpServerTransport(const TransportParts& parts, PortLog& log,
                                                  TransportEvents events);
/// None for a format that does not come in files, and for a setting that names no file.
std::unique_ptr<Transport> MakeFileTransport(const TransportParts& parts, PortLog& log,
                                             TransportEvents events);
/// None for a format that is not polled.
std::unique_ptr<Transport> MakeHttpTransport(const TransportParts& parts, PortLog& log,
                                             TransportEvents events);
/// None for a format that is no mail.
std::unique_ptr<Transport> MakePop3Transport(const TransportParts& parts, PortLog& log,
                                             TransportEvents events);
std::unique_ptr<Transport> MakeSmtpTransport(const TransportParts& parts, PortLog& log,
                                             TransportEvents events);
std::unique_ptr<Transport> MakeUdpTransport(const TransportParts& parts, PortLog& log,
                                            TransportEvents events);

}  // namespace nordkeep
