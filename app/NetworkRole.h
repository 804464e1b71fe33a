#pragma once

#include "app/Foundation.h"
#include "network/ClientReplica.h"
#include "network/ClientSession.h"
#include "network/Mirror.h"
#include "network/NetworkServer.h"
#include "network/ServerReplica.h"

#include <functional>
#include <memory>

namespace nordkeep {

/// What the role of this copy adds to the centre: nothing alone, the service of clients on a server, the
/// mirror of a server on a client.
class NetworkRole {
 public:
    /// What the two need of the centre.
    struct Needs {
        EventStore& store;
        AlarmHandling& handling;
        AlarmViews& views;
        Translations& translations;
        ObjectViews& objectViews;
        ServicePeriods& servicePeriods;
        const AliveTestTimers& timers;
        TorvexLink& torvex;
        std::function<std::vector<PortInTree>()> ports;
        std::function<void()> requestReload;
        ClientScreen& screen;
    };

    explicit NetworkRole(Foundation& foundation);
    ~NetworkRole();
    NetworkRole(const NetworkRole&) = delete;
    NetworkRole& operator=(const NetworkRole&) = delete;

    /// Where changed records and objects go besides the files; fit to be handed on at once.
    AlarmReplica& Alarms() { return *alarms_; }
    ObjectReplica& Objects() { return *objects_; }

    /// The ways of a client to its server; none on any other copy.
    ClientReplica* Client() { return clientReplica_.get(); }
    ClientSession* Session() { return session_.get(); }

    void Attach(const Needs& needs);
    /// On a client: fetches the server's state.
    void BringInState();
    /// On a client: fetches the sets and the tree again.
    void RequestInitialData();
    bool IsAnyClientConnected() const;
    /// On a server: looks after the clients that have fallen silent.
    void Supervise(int elapsedMs);
    /// On a client: signs of life, and the tries to get a lost connection back.
    void TickClient(int elapsedMs);
    /// On a server, behind a reload of the translations.
    void SendReload();
    /// Tells the other side of the end, and closes.
    void Close();

 private:
    Foundation& foundation_;
    NoReplica noReplica_{};
    NoObjectReplica noObjectReplica_{};
    AlarmReplica* alarms_ = &noReplica_;
    ObjectReplica* objects_ = &noObjectReplica_;
    std::unique_ptr<ServerReplica> serverReplica_{};
    std::unique_ptr<NetworkServer> server_{};
    ClientUser user_{};
    std::unique_ptr<ClientReplica> clientReplica_{};
    std::unique_ptr<Mirror> mirror_{};
    std::unique_ptr<ClientSession> session_{};
};

}  // namespace nordkeep
