#pragma once

#include "platform/Text.h"

#include <functional>
#include <memory>

namespace nordkeep {

/// The event that a serial line tells.
enum class CommEvent { Receive = 2, Error = 1000 };

/// One serial line slot.
class MSComm {
 public:
    virtual ~MSComm() = default;
    /// Receive: bytes are waiting. Error: the line has gone and is closed. The handler can run nested.
    virtual void SetOnComm(std::function<void(CommEvent)> onComm) = 0;

    /// The device file that the line stands for, such as "/dev/ttyS0".
    virtual void SetDevice(const Text& device) = 0;
    /// "baud,parity,data bits,stop bits", such as "9600,N,8,1"; what is missing or unknown stays at that.
    virtual void SetSettings(const Text& settings) = 0;
    /// 0 none, 1 XON/XOFF, 2 RTS/CTS, 3 both.
    virtual void SetHandshaking(int handshaking) = 0;
    /// Opens or closes the line. False, with LastError, when it cannot be opened.
    virtual bool SetPortOpen(bool open) = 0;
    virtual bool PortOpen() const = 0;
    virtual std::size_t InBufferCount() const = 0;
    /// Takes everything that has arrived.
    virtual Text Input() = 0;
    /// Queues the bytes; false when the line is not open.
    virtual bool Output(TextView bytes) = 0;
    /// Raises or lowers the request-to-send and data-terminal-ready lines together; false without such lines.
    virtual bool SetControlLines(bool raised) = 0;
    virtual Text LastError() const = 0;
};

class SerialFactory {
 public:
    virtual ~SerialFactory() = default;
    virtual std::unique_ptr<MSComm> NewLine() = 0;
};

}  // namespace nordkeep
