#include "app/NetworkRole.h"

namespace nordkeep {

NetworkRole::NetworkRole(Foundation& foundation) {
    if (ClientSlots* slots = foundation.Clients()) {
        serverReplica_ = std::make_unique<ServerReplica>(*slots);
        alarms_ = serverReplica_.get();
        objects_ = serverReplica_.get();
    }
    if (ServerLink* link = foundation.Server()) {
        clientReplica_ = std::make_unique<ClientReplica>(*link, user_);
        history_ = std::make_unique<RemoteHistory>(*link, foundation.Platform().clock, user_);
        accounts_ = std::make_unique<RemoteAccounts>(*link, foundation.Platform().clock);
        alarms_ = clientReplica_.get();
        objects_ = clientReplica_.get();
    }
}

NetworkRole::~NetworkRole() = default;

}  // namespace nordkeep
