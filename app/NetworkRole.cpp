#include "app/NetworkRole.h"

namespace nordkeep {

NetworkRole::NetworkRole(Foundation& foundation) : foundation_(foundation) {
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

void NetworkRole::Attach(const Needs& needs) {
    const PlatformParts& platform = foundation_.Platform();
    if (ClientSlots* slots = foundation_.Clients()) {
        server_ = std::make_unique<NetworkServer>(NetworkServer::Needs{.slots = *slots,
                                                                       .dataFolder = foundation_.DataFolder(),
                                                                       .files = foundation_.Files(),
                                                                       .language = foundation_.Texts(),
                                                                       .clock = platform.clock,
                                                                       .settings = foundation_.Network(),
                                                                       .store = needs.store,
                                                                       .handling = needs.handling,
                                                                       .translations = needs.translations,
                                                                       .objectViews = needs.objectViews,
                                                                       .objectReplica = *objects_,
                                                                       .servicePeriods = needs.servicePeriods,
                                                                       .timers = needs.timers,
                                                                       .torvex = needs.torvex,
                                                                       .ports = needs.ports,
                                                                       .requestReload = needs.requestReload});
    }
    if (ServerLink* link = foundation_.Server()) {
        mirror_ = std::make_unique<Mirror>(Mirror::Needs{.link = *link,
                                                         .loop = platform.loop,
                                                         .clock = platform.clock,
                                                         .language = foundation_.Texts(),
                                                         .log = foundation_.Log(),
                                                         .settings = foundation_.Network(),
                                                         .store = needs.store,
                                                         .views = needs.views,
                                                         .translations = needs.translations,
                                                         .objectViews = needs.objectViews,
                                                         .timers = needs.timers,
                                                         .screen = needs.screen,
                                                         .user = user_});
        session_ = std::make_unique<ClientSession>(ClientSession::Needs{.link = *link,
                                                                        .mirror = *mirror_,
                                                                        .replica = *clientReplica_,
                                                                        .language = foundation_.Texts(),
                                                                        .log = foundation_.Log(),
                                                                        .settings = foundation_.Network(),
                                                                        .screen = needs.screen});
    }
}

void NetworkRole::BringInState() {
    if (session_) session_->Begin();
}

void NetworkRole::RequestInitialData() {
    if (mirror_) mirror_->RequestInitialData();
}

bool NetworkRole::IsAnyClientConnected() const {
    const ClientSlots* slots = foundation_.Clients();
    return slots && slots->ConnectedCount() > 0;
}

void NetworkRole::Supervise(int elapsedMs) {
    if (server_) foundation_.Clients()->Supervise(elapsedMs);
}

void NetworkRole::TickClient(int elapsedMs) {
    if (session_) session_->Tick(elapsedMs);
}

void NetworkRole::SendReload() {
    if (server_) server_->SendReload();
}

void NetworkRole::Close() {
    if (ClientSlots* slots = foundation_.Clients()) slots->Shutdown();
    if (ServerLink* link = foundation_.Server()) link->Close();
}

}  // namespace nordkeep
