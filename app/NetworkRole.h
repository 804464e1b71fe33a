#pragma once

#include "app/Foundation.h"
#include "network/ClientReplica.h"
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
};

}  // namespace nordkeep
