#pragma once

#include <string>

namespace nordkeep::tools {

/// A connection to a port: TCP, UDP or a serial device, by a target such as "tcp:localhost:17601",
/// "udp:localhost:17603", "serial:/dev/ttyS0,9600", or "listen:17604" for a port that calls out.
class Line {
 public:
    Line() = default;
    ~Line();
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    /// False, with Error, when it cannot be opened.
    bool Open(const std::string& target);
    /// Opens the target of the last Open again.
    bool Reopen();
    bool Send(const std::string& bytes);
    /// What has arrived; empty when nothing waits. Lost is set when the other side has closed.
    std::string Receive();
    bool IsLost() const { return isLost_; }
    int Descriptor() const { return descriptor_; }
    const std::string& Error() const { return error_; }
    /// Whether the target is one of the forms above; else it is the words that are wrong.
    bool IsTargetUnderstood() const { return isTargetUnderstood_; }

 private:
    bool OpenSocket(const std::string& host, const std::string& port, int type);
    bool OpenSerial(const std::string& device, int baud);
    bool WaitForCall(const std::string& port);
    bool Fail(const std::string& what);

    std::string target_{};
    int descriptor_ = -1;
    bool isLost_ = false;
    bool isTargetUnderstood_ = true;
    std::string error_{};
};

}  // namespace nordkeep::tools
