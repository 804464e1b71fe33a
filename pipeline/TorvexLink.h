#pragma once

#include "pipeline/DispatchSettings.h"
#include "pipeline/outputs/OutageLog.h"
#include "platform/EventLoop.h"
#include "platform/Winsock.h"

#include <memory>

namespace nordkeep {

/// The line to the dispatcher: either the system listens, and who calls last is served, or it connects out
/// and tries again by itself. What comes in on the line is read and thrown away.
class TorvexLink {
 public:
    struct Needs {
        const TorvexSettings& settings;
        SocketFactory& sockets;
        EventLoop& loop;
        SysLog& log;
        const Language& language;
    };
    explicit TorvexLink(const Needs& needs);

    void Start();
    void Close();
    bool IsConfigured() const { return settings_.Port > 0; }
    bool IsConnected() const { return data_->State() == SocketState::Connected; }
    /// False when the line is not connected.
    bool Send(TextView line);

 private:
    bool ConnectsOut() const { return !settings_.Address.empty(); }
    void KeepUp();
    void Listen();
    void Connect();
    /// "Torvex" with the peer's address, or the port where it may call.
    Text Name() const;
    void NoteFailure(const Text& why) { outage_.NoteFailure(Name(), why); }
    void NoteFailure(int text) { NoteFailure(language_.GetLanguageText(text)); }

    const TorvexSettings& settings_;
    const Language& language_;
    OutageLog outage_;
    std::unique_ptr<Winsock> listener_;
    std::unique_ptr<Winsock> data_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace nordkeep
