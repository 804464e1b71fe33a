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
        alarms_ = clientReplica_.get();
        objects_ = clientReplica_.get();
    }
}

NetworkRole::~NetworkRole() = default;

}  // namespace nordkeep
