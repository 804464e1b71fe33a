#include "app/NetworkPeers.h"

namespace nordkeep {

NetworkPeers::NetworkPeers(Foundation& foundation, NetworkRole& role, const Needs& needs)
    : foundation_(foundation) {
    if (ClientSlots* slots = foundation.Clients()) MakeServer(*slots, role.Objects(), needs);
    if (ServerLink* link = foundation.Server()) MakeSession(*link, role, needs);
}

NetworkPeers::~NetworkPeers() = default;

void NetworkPeers::MakeServer(ClientSlots& slots, ObjectReplica& replica, const Needs& needs) {
    server_ = std::make_unique<NetworkServer>(NetworkServer::Needs{
        .slots = slots,
        .dataFolder = foundation_.DataFolder(),
        .files = foundation_.Files(),
        .language = foundation_.Texts(),
        .clock = foundation_.Platform().clock,
        .settings = foundation_.Network(),
        .store = needs.store,
        .commit = needs.commit,
        .handling = needs.handling,
        .translations = needs.translations,
        .objectViews = needs.objectViews,
        .objectReplica = replica,
        .servicePeriods = needs.servicePeriods,
        .deeds = needs.deeds,
        .history = needs.history,
        .timers = needs.timers,
        .torvex = needs.torvex,
        .ports = [&ports = needs.ports] { return ports.InTree(); },
        .accounts = [&ports = needs.portList](const Text& line) { return ports.AccountsOf(line); },
        .requestReload = [&reload = needs.reload] { reload.Ask(); },
        .noteSettings =
            [&reload = needs.reload] {
                reload.AskForSettings();
                reload.AskForPorts();
            }});
}

void NetworkPeers::MakeSession(ServerLink& link, NetworkRole& role, const Needs& needs) {
    mirror_ = std::make_unique<Mirror>(Mirror::Needs{.link = link,
                                                     .loop = foundation_.Platform().loop,
                                                     .clock = foundation_.Platform().clock,
                                                     .language = foundation_.Texts(),
                                                     .log = foundation_.Log(),
                                                     .settings = foundation_.Network(),
                                                     .store = needs.store,
                                                     .views = needs.views,
                                                     .translations = needs.translations,
                                                     .objectViews = needs.objectViews,
                                                     .timers = needs.timers,
                                                     .screen = needs.screen,
                                                     .user = role.User(),
                                                     .history = *role.History(),
                                                     .accounts = *role.Accounts()});
    session_ = std::make_unique<ClientSession>(ClientSession::Needs{.link = link,
                                                                    .mirror = *mirror_,
                                                                    .replica = *role.Client(),
                                                                    .language = foundation_.Texts(),
                                                                    .log = foundation_.Log(),
                                                                    .settings = foundation_.Network(),
                                                                    .screen = needs.screen});
}

void NetworkPeers::BringInState() {
    if (session_) session_->Begin();
}

void NetworkPeers::RequestInitialData() {
    if (mirror_) mirror_->RequestInitialData();
}

void NetworkPeers::Reconnect() {
    if (session_) session_->ReconnectNow();
}

void NetworkPeers::GiveUp() {
    if (session_) session_->EndProgram();
}

bool NetworkPeers::IsAnyClientConnected() const {
    const ClientSlots* slots = foundation_.Clients();
    return slots && slots->ConnectedCount() > 0;
}

void NetworkPeers::Supervise(int elapsedMs) {
    if (server_) foundation_.Clients()->Supervise(elapsedMs);
}

void NetworkPeers::TickClient(int elapsedMs) {
    if (session_) session_->Tick(elapsedMs);
}

void NetworkPeers::SendReload() {
    if (server_) server_->SendReload();
}

void NetworkPeers::SendCentreState(const CentreConditions& centre) {
    if (server_ && server_->IsCentreStateWanted()) {
        server_->SendCentreState(centre.Lines(), centre.FactsForClients());
    }
}

void NetworkPeers::Close() {
    if (ClientSlots* slots = foundation_.Clients()) slots->Shutdown();
    if (ServerLink* link = foundation_.Server()) link->Close();
}

}  // namespace nordkeep
