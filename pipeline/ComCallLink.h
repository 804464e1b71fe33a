#pragma once

#include "pipeline/OutputSettings.h"
#include "pipeline/outputs/OutageLog.h"
#include "platform/Winsock.h"

#include <memory>

namespace nordkeep {

/// The line to a ComCall receiver: the system connects to it and tries again by itself. What comes in on the
/// line is read and thrown away.
class ComCallLink {
 public:
    struct Needs {
        const ComCallSettings& settings;
        SocketFactory& sockets;
        SysLog& log;
        const Language& language;
    };
    explicit ComCallLink(const Needs& needs);

    bool IsConfigured() const { return !settings_.Address.empty(); }
    /// It is to be connected, and is not.
    bool IsPeerLost() const { return IsConfigured() && settings_.ReconnectInterval > 0 && !IsConnected(); }
    bool IsConnected() const { return socket_->State() == SocketState::Connected; }
    /// False when the line is not connected.
    bool Send(TextView line);
    /// One tick of the open timer: line feeds, and the next attempt to connect.
    void Tick(int intervalMs);
    void Close() { socket_->Close(); }

 private:
    void FeedLine(int intervalMs);
    bool IsStillTrying() const;
    void Connect();
    Text Name() const { return "ComCall " + settings_.Address; }
    void NoteFailure(const Text& why) { outage_.NoteFailure(Name(), why); }
    /// A line that nothing is to be sent on by its settings, told once.
    void NoteUnused();

    const ComCallSettings& settings_;
    SysLog& log_;
    const Language& language_;
    OutageLog outage_;
    std::unique_ptr<Winsock> socket_;
    int lineFeedCounterMs_ = 0;
    int reconnectCountdownMs_ = 0;
    int attemptAgeMs_ = 0;
    bool isUnusedTold_ = false;
};

}  // namespace nordkeep
