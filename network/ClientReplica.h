#pragma once

#include "network/ClientScreen.h"
#include "network/ServerLink.h"
#include "store/AlarmReplica.h"
#include "translation/ObjectReplica.h"
#include "translation/ServicePeriods.h"

namespace nordkeep {

/// Sends what an operator does at a client to the server, which changes its records and tells all clients.
class ClientReplica final : public AlarmReplica, public ObjectReplica {
 public:
    ClientReplica(ServerLink& link, const ClientUser& user) : link_(link), user_(user) {}

    /// Stamps the operator's initials. A client writes no event files.
    bool SendAlarm(cAlarm& alarm, NetworkEvent event) override;
    void SendObjectUpdate(const cTranslate&, const cIDCode&) override {}
    void SendServiceMode(const cTranslate& set, const cIDCode& object) override;
    void SendAliveTestReset(const cTranslate& set, const cIDCode& object) override;

    /// The commands of an operator. They leave the mirror alone; the server's answer changes it.
    void RequestServiceMode(const cTranslate& set, const cIDCode& object, const ServicePeriod& period);
    /// In front of it, to a server that knows the message.
    void TellServiceReason(const cTranslate& set, const cIDCode& object, const Text& reason);
    void RequestAliveTestReset(const cTranslate& set, const cIDCode& object);
    void RequestTorvexLine(TextView line);
    void RequestLogin(const LoginRequest& request);
    void RequestLogout();

 private:
    ServerLink& link_;
    const ClientUser& user_;
};

}  // namespace nordkeep
