#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// The far end of one TCP connection that the program under test has made.
class Visitor {
 public:
    explicit Visitor(int descriptor) : descriptor_(descriptor) {}
    ~Visitor() { Close(); }
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;

    /// Waits up to half a minute for the next line feed; without it, what there was.
    Text ReceiveLine() const;
    void Close();

 private:
    int descriptor_;
};

/// A TCP server of the loopback address that the program under test connects to.
class Listener {
 public:
    explicit Listener(int port = 0);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    int Port() const { return port_; }
    /// Waits up to half a minute for a caller.
    Visitor Accept() const;

 private:
    int descriptor_;
    int port_ = 0;
};

}  // namespace nordkeep
