#pragma once

#include "app/Foundation.h"
#include "network/ClientReplica.h"
#include "network/RemoteAccounts.h"
#include "network/RemoteHistory.h"
#include "network/ServerReplica.h"

#include <memory>

namespace nordkeep {

/// Where changed records and objects go besides the files, by the role of this copy: nowhere, to the clients,
/// to the server. Everything that changes them is built on it.
class NetworkRole {
 public:
    explicit NetworkRole(Foundation& foundation);
    ~NetworkRole();
    NetworkRole(const NetworkRole&) = delete;
    NetworkRole& operator=(const NetworkRole&) = delete;

    AlarmReplica& Alarms() { return *alarms_; }
    ObjectReplica& Objects() { return *objects_; }

    /// The way of a client to its server; none on any other copy.
    ClientReplica* Client() { return clientReplica_.get(); }
    /// The way of a client to the journal of its server; none on any other copy.
    RemoteHistory* History() { return history_.get(); }
    /// What a client knows of the senders that share a line of its server; none on any other copy.
    RemoteAccounts* Accounts() { return accounts_.get(); }
    /// Who works at a client, as its server has said.
    ClientUser& User() { return user_; }

 private:
    NoReplica noReplica_{};
    NoObjectReplica noObjectReplica_{};
    AlarmReplica* alarms_ = &noReplica_;
    ObjectReplica* objects_ = &noObjectReplica_;
    std::unique_ptr<ServerReplica> serverReplica_{};
    ClientUser user_{};
    std::unique_ptr<ClientReplica> clientReplica_{};
    std::unique_ptr<RemoteHistory> history_{};
    std::unique_ptr<RemoteAccounts> accounts_{};
};

}  // namespace nordkeep
