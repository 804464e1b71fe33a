#pragma once

#include "translation/ServicePeriods.h"
#include "translation/Translate.h"

namespace nordkeep {

/// What an operator asks of the centre. A copy with ports of its own does it here; a client asks its server,
/// whose answer changes the mirror.
class CentreOperations {
 public:
    virtual ~CentreOperations() = default;
    virtual void SetService(cTranslate& set, cIDCode& object, const ServicePeriod& period) = 0;
    virtual void ResetAliveTests(cTranslate& set, cIDCode& object) = 0;
    /// Takes a line to the dispatcher; false when it did not get away.
    virtual bool SendToDispatcher(const Text& line) = 0;
    /// The translations are read, on a client fetched, again.
    virtual void Reload() = 0;
    /// In the receivers that have one; a client has no receivers.
    virtual void SetClocks() = 0;
    /// Reads all stored events again; a client has none.
    virtual void LoadEvents() = 0;
};

/// What a client's operator asks of the connection to the server. Nobody at another copy is offered it.
class ServerContact {
 public:
    virtual ~ServerContact() = default;
    /// The answer comes by itself.
    virtual void Login(const Text& userName, const Text& password) = 0;
    virtual void Logout() = 0;
    /// While the connection is lost: tries at once, or ends the program.
    virtual void Reconnect() = 0;
    virtual void GiveUp() = 0;
};

/// For a copy without a server.
class NoServerContact final : public ServerContact {
 public:
    void Login(const Text&, const Text&) override {}
    void Logout() override {}
    void Reconnect() override {}
    void GiveUp() override {}
};

}  // namespace nordkeep
