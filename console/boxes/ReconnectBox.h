#pragma once

#include "console/boxes/CentreOperations.h"
#include "console/lists/Captions.h"
#include "console/lists/WindowView.h"
#include "network/ClientScreen.h"
#include "platform/Clock.h"
#include "platform/EventLoop.h"

namespace nordkeep {

/// Stands on top while a client has no contact with its server. The tries themselves are the session's.
class ReconnectBox {
 public:
    struct Needs {
        const Language& language;
        const Captions& captions;
        const Clock& clock;
        EventLoop& loop;
        ServerContact& server;
        int reconnectIntervalMs = 60000;
    };
    explicit ReconnectBox(const Needs& needs);

    void SetView(WindowView& view) { view_ = &view; }

    void ShowLinkState(LinkState state);
    bool IsOpen() const { return isOpen_; }

    Text Label() const;
    /// "Next attempt in 12 s"; empty while one is under way.
    Text Countdown() const;
    /// The label is white on red, else as the system draws it.
    bool IsFlashed() const { return isFlashed_; }
    bool IsReconnectEnabled() const { return state_ == LinkState::Lost; }
    void Reconnect();
    void Shutdown();

 private:
    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    std::unique_ptr<Timer> flash_;
    LinkState state_ = LinkState::Connected;
    std::int64_t lostSinceMs_ = 0;
    bool isOpen_ = false;
    bool isFlashed_ = false;
};

}  // namespace nordkeep
