#include "app/NetworkRole.h"

namespace nordkeep {

/// The screen of a client that has none: the end of the program is all that concerns it.
class NetworkRole::Screen final : public ClientScreen {
 public:
    Screen(Dialogs& dialogs, std::function<void()> endProgram)
        : dialogs_(dialogs), endProgram_(std::move(endProgram)) {}

    void ShowLinkState(LinkState) override {}
    void ShowUser(const ClientUser&) override {}
    void AskForLogin() override {}
    void ForgetPortTree() override {}
    void ShowPortTree(const std::vector<PortTreeNode>&) override {}
    void PresentNewEvent(cAlarm&) override {}
    void EndProgram(const Text& message) override {
        if (!message.empty()) dialogs_.ShowMessage(message);
        endProgram_();
    }

 private:
    Dialogs& dialogs_;
    std::function<void()> endProgram_;
};

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
                                                                       .views = needs.views,
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
        screen_ = std::make_unique<Screen>(platform.dialogs, needs.endProgram);
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
                                                         .screen = *screen_,
                                                         .user = user_});
        session_ = std::make_unique<ClientSession>(ClientSession::Needs{.link = *link,
                                                                        .mirror = *mirror_,
                                                                        .replica = *clientReplica_,
                                                                        .language = foundation_.Texts(),
                                                                        .log = foundation_.Log(),
                                                                        .settings = foundation_.Network(),
                                                                        .screen = *screen_});
    }
}

void NetworkRole::BringInState() {
    if (session_) session_->Begin();
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
