#pragma once

#include "network/ClientScreen.h"
#include "network/PeerLog.h"
#include "network/RemoteAccounts.h"
#include "network/RemoteHistory.h"
#include "network/ServerLink.h"
#include "runtime/CentreState.h"
#include "store/EventStore.h"
#include "translation/AliveTestTimers.h"
#include "translation/Translations.h"

#include <deque>
#include <unordered_set>

namespace nordkeep {

/// The server's events, translation sets and tree of ports as a client holds them, and who is logged in.
/// Everything here is the server's; an operator's action changes it by way of the server only.
class Mirror final : public ServerPushes {
 public:
    struct Needs {
        ServerLink& link;
        EventLoop& loop;
        const Clock& clock;
        const Language& language;
        SysLog& log;
        const NetworkSettings& settings;
        EventStore& store;
        AlarmViews& views;
        Translations& translations;
        ObjectViews& objectViews;
        const AliveTestTimers& timers;
        ClientScreen& screen;
        ClientUser& user;
        RemoteHistory& history;
        RemoteAccounts& accounts;
    };
    explicit Mirror(const Needs& needs);
    ~Mirror() override;
    Mirror(const Mirror&) = delete;
    Mirror& operator=(const Mirror&) = delete;

    const std::vector<PortTreeNode>& PortTree() const { return tree_; }
    /// What the server tells of itself; nothing until it has said that it does.
    struct ServerState {
        bool isTold = false;
        std::int32_t knowsUpTo = 0;  // the highest message number that both know
        std::vector<LineFigures> lines{};
        std::vector<ConditionFact> conditions{};
    };
    const ServerState& Server() const { return server_; }

    /// Builds the sets and the tree from nothing; also the update command of a client. False when the
    /// connection is lost.
    bool RequestInitialData();
    bool RequestAllEvents();

    void HandleMessage(std::uint8_t number, TextView payload) override;
    void ConnectionStarts() override;
    void RequestEnded() override;

 private:
    struct Handler {
        Message message;
        void (Mirror::*handle)(TextView payload);
    };
    static const Handler kHandlers[];

    void AddTranslation(TextView payload);
    void TakePortTree(TextView payload);
    void TakeInitialEvent(TextView payload);
    void TakeNewEvent(TextView payload);
    void TakeOldEvent(TextView payload);
    void RemovePortTree(TextView payload);
    void RemoveTranslations(TextView payload);
    void ResetAliveTests(TextView payload);
    void SetServiceMode(TextView payload);
    void UpdateObject(TextView payload);
    void Login(TextView payload);
    void Logout(TextView payload);
    void ServerShutsDown(TextView payload);
    void TakeExtensions(TextView payload);
    void TakeLines(TextView payload);
    void TakeConditions(TextView payload);
    void TakeHistory(TextView payload) { needs_.history.TakeHistory(payload); }
    void TakeAccounts(TextView payload) { needs_.accounts.Take(payload); }
    void TakeReport(TextView payload) { needs_.history.TakeReport(payload); }

    cAlarm& StoreEvent(TextView payload);
    void ShowWhatWaits();

    Needs needs_;
    PeerLog log_;
    std::vector<PortTreeNode> tree_{};
    ServerState server_{};
    // Kept back while a request is pending, since showing them sends requests of its own.
    bool isTreeToShow_ = false;
    std::deque<std::int32_t> eventsToPresent_{};
    std::unordered_set<std::int32_t> removed_{};  // pointers of events that the server has taken out
    std::shared_ptr<bool> life_ = std::make_shared<bool>(true);  // for tasks that come after the end
};

}  // namespace nordkeep
