#include "app/PlaceState.h"

namespace nordkeep {

void PlaceState::NoteAlarm() {
    flood_.Note(needs_.foundation.Platform().clock.MonotonicMs());
}

bool PlaceState::IsQuestionUp() const {
    return needs_.foundation.Platform().dialogs.IsQuestionUp();
}

bool PlaceState::IsFlood() const {
    return flood_.IsFlood(needs_.foundation.Platform().clock.MonotonicMs());
}

CopyFacts PlaceState::Facts() const {
    const ClientSlots* slots = needs_.foundation.Clients();
    const ServerLink* link = needs_.foundation.Server();
    return {.fullName = user_.fullName,
            .server = link ? link->ServerAddress() : Text(),
            .clients = slots ? static_cast<int>(slots->ConnectedCount()) : 0,
            .isSounding = needs_.sound.IsSounding(),
            .hasGoogolPort = needs_.ports.HasClock(),
            .isSimulation = needs_.foundation.Switches().simulate};
}

std::optional<std::vector<PortTreeNode>> LocalPlaceState::OwnTree() const {
    return MakePortTree(Parts().ports.InTree());
}

std::vector<ConditionFact> ClientPlaceState::Conditions() const {
    std::vector<ConditionFact> facts = PlaceState::Conditions();
    const Mirror::ServerState* server = peers_.ServerState();
    if (server) facts.insert(facts.end(), server->conditions.begin(), server->conditions.end());
    return facts;
}

OperatorRights ClientPlaceState::Rights() const {
    return {.role = Role::Client, .level = User().level, .isConnectionLost = link_.IsConnectionLost()};
}

}  // namespace nordkeep
