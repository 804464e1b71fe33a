#pragma once

#include "pipeline/DispatchSettings.h"
#include "platform/EventLoop.h"
#include "platform/Winsock.h"

#include <memory>

namespace nordkeep {

/// The line to the dispatcher: either the system listens, and who calls last is served, or it connects out
/// and tries again by itself. What comes in on the line is read and thrown away.
class TorvexLink {
 public:
    TorvexLink(const TorvexSettings& settings, SocketFactory& sockets, EventLoop& loop);

    void Start();
    void Close();
    bool IsConfigured() const { return settings_.Port > 0; }
    bool IsConnected() const { return data_->State() == SocketState::Connected; }
    /// False when the line is not connected.
    bool Send(TextView line);

 private:
    bool ConnectsOut() const { return !settings_.Address.empty(); }
    void KeepUp();

    const TorvexSettings& settings_;
    std::unique_ptr<Winsock> listener_;
    std::unique_ptr<Winsock> data_;
    std::unique_ptr<Timer> timer_;
};

}  // namespace nordkeep
