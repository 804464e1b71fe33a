#pragma once

#include "app/CentreConditions.h"
#include "app/NetworkRole.h"
#include "app/OperatorPorts.h"
#include "app/ReloadRequest.h"
#include "network/ClientSession.h"
#include "network/Mirror.h"
#include "network/NetworkServer.h"

namespace nordkeep {

/// The service of clients on a server, the mirror of a server on a client, nothing alone. It works on most of
/// the centre, so that it stands near its end.
class NetworkPeers {
 public:
    struct Needs {
        EventStore& store;
        EventCommit& commit;
        AlarmHandling& handling;
        AlarmViews& views;
        Translations& translations;
        ObjectViews& objectViews;
        ServicePeriods& servicePeriods;
        Deeds& deeds;
        HistoryWork& history;
        const AliveTestTimers& timers;
        TorvexLink& torvex;
        const OperatorPorts& ports;
        const PortList& portList;
        ReloadRequest& reload;
        ClientScreen& screen;
    };
    NetworkPeers(Foundation& foundation, NetworkRole& role, const Needs& needs);
    ~NetworkPeers();
    NetworkPeers(const NetworkPeers&) = delete;
    NetworkPeers& operator=(const NetworkPeers&) = delete;

    /// On a client: fetches the server's state.
    void BringInState();
    /// On a client: fetches the sets and the tree again.
    void RequestInitialData();
    /// On a client that has lost its server: tries at once, or ends the program.
    void Reconnect();
    void GiveUp();
    bool IsAnyClientConnected() const;
    /// On a server: looks after the clients that have fallen silent.
    void Supervise(int elapsedMs);
    /// On a client: signs of life, and the tries to get a lost connection back.
    void TickClient(int elapsedMs);
    /// On a server, behind a reload of the translations.
    void SendReload();
    /// On a server: tells its clients how it does.
    void SendCentreState(const CentreConditions& centre);
    /// On a client: what its server tells of itself; none on any other copy.
    const Mirror::ServerState* ServerState() const { return mirror_ ? &mirror_->Server() : nullptr; }
    /// Tells the other side of the end, and closes.
    void Close();

 private:
    void MakeServer(ClientSlots& slots, ObjectReplica& replica, const Needs& needs);
    void MakeSession(ServerLink& link, NetworkRole& role, const Needs& needs);

    Foundation& foundation_;
    std::unique_ptr<NetworkServer> server_{};
    std::unique_ptr<Mirror> mirror_{};
    std::unique_ptr<ClientSession> session_{};
};

}  // namespace nordkeep
