#pragma once

#include "platform/Clock.h"
#include "platform/MSComm.h"
#include "platform/Winsock.h"
#include "ports/lines/PortLog.h"

#include <memory>

namespace nordkeep {

/// Who takes in what comes on a line.
class LineListener {
 public:
    virtual ~LineListener() = default;
    /// Bytes wait to be taken. Can come nested.
    virtual void OnDataWaiting() = 0;
    /// What has been received so far, with `rest` behind it, belongs to a line that is gone: what is complete
    /// in it counts, and nobody waits for answers to it.
    virtual void OnNewStream(Text rest) = 0;
};

/// What becomes of the line behind what is sent.
enum class Behind {
    StayUp,
    HangUp,  // once everything has left; a line that nobody has called stays up
};

/// Who is at the other end, as far as it can be told.
struct FarEnd {
    bool isAwaited = false;  // whoever wants something calls, and nobody does at the moment
    bool isConnected = false;
    bool isMissed = false;   // it has been asked, and did not answer
    bool isVisited = false;  // it is looked at now and then, and never open
    Text who{};              // its address, or that of the last one
};

/// A serial line, a connection or a socket: how it is opened, read and written. Its port decides when.
class Line {
 public:
    virtual ~Line() = default;
    virtual bool IsOpen() const = 0;
    /// One attempt to open, with its log line.
    virtual void Open() = 0;
    virtual void Close(bool isShuttingDown) = 0;
    /// Everything that has arrived, on UDP one datagram; empty when nothing waits.
    virtual Text Take() = 0;
    virtual FarEnd End() const { return {}; }
    /// While held, nobody else is let in, and nobody else is called.
    virtual void HoldCallers(bool /*isHeld*/) {}
    /// True when somebody is at the other end, as far as the line can tell.
    virtual bool CanSend() const = 0;
    /// False when nothing was sent. A hang-up needs no bytes.
    virtual bool Send(TextView bytes, Behind behind) = 0;
    /// Who has sent what was taken last, where several share the line; nobody in particular elsewhere.
    virtual SocketPeer Sender() const { return {}; }
    /// Answers just him.
    virtual bool SendTo(const SocketPeer& /*peer*/, TextView bytes, Behind behind) {
        return Send(bytes, behind);
    }
};

/// What lines are made from.
struct LineParts {
    SocketFactory& sockets;
    SerialFactory& serial;
    const Settings& settings;
    const Clock& clock;
    PortLog& log;
};

/// True for the types of port that have a line; the others collect.
bool IsLineType(PortType type);
/// The line of a port of such a type.
std::unique_ptr<Line> MakeLine(PortType type, const LineParts& parts, LineListener& listener);

std::unique_ptr<Line> MakeSerialLine(const LineParts& parts, LineListener& listener);
std::unique_ptr<Line> MakeTcpClientLine(const LineParts& parts, LineListener& listener);
std::unique_ptr<Line> MakeTcpServerLine(const LineParts& parts, LineListener& listener);
std::unique_ptr<Line> MakeUdpLine(const LineParts& parts, LineListener& listener);

}  // namespace nordkeep
