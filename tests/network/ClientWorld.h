#pragma once

#include "network/ClientSession.h"
#include "network/RemoteDataFiles.h"
#include "tests/network/ServerWorld.h"

namespace nordkeep {

/// Writes down what a client's screen is told.
class RecordingScreen final : public ClientScreen {
 public:
    void ShowLinkState(LinkState state) override { states.push_back(state); }
    void ShowUser(const ClientUser& user) override { level = user.level; }
    void AskForLogin() override { ++loginQuestions; }
    void ForgetPortTree() override {}
    void ShowPortTree(const std::vector<PortTreeNode>& nodes) override { tree = nodes; }
    void PresentNewEvent(cAlarm& alarm) override {
        presented.push_back(alarm.m_AlarmCodeToStore);
        if (onPresent) onPresent();
    }
    void EndProgram(const Text& message) override { ends.push_back(message); }

    std::vector<LinkState> states{};
    std::int32_t level = -1;
    int loginQuestions = 0;
    std::vector<PortTreeNode> tree{};
    std::vector<Text> presented{};
    std::function<void()> onPresent{};
    std::vector<Text> ends{};
};

/// A client with a data folder of its own.
struct ClientWorld : NetworkGround {
    ClientWorld(ManualTime& time_, SocketFactory& sockets_) : ClientWorld(time_, time_, sockets_) {}
    ClientWorld(const Clock& time_, EventLoop& loop_, SocketFactory& sockets_)
        : NetworkGround(time_, loop_, sockets_, {.ServerAddress = "server"}) {
        folder.MakeFolders("LogFiles_Client");
        language.LoadFrom("1061=cannot\n1062=lost\n1065=ends\n1076= at \n1077=unknown\n1081=bye\n");
        log.SetRole(Role::Client);
    }
    /// As the program starts.
    ClientStart Start() {
        ClientStart start = StartClient(link, language, log);
        if (start.failure.empty()) session.Begin();
        return start;
    }

    ServerLink link{{sockets, loop, time, language, log, traffic, network}};
    ClientUser user{};
    ClientReplica replica{link, user};
    TestCore core{Below(Role::Client, replica)};
    EventStore& store = core.store;
    Translations& translations = core.translations;
    RecordingScreen screen{};
    RemoteHistory history{link, time, user};
    RemoteAccounts accounts{link, time};
    Mirror mirror{{.link = link,
                   .loop = loop,
                   .clock = time,
                   .language = language,
                   .log = log,
                   .settings = network,
                   .store = store,
                   .views = core.views,
                   .translations = translations,
                   .objectViews = core.noObjectViews,
                   .timers = core.timers,
                   .screen = screen,
                   .user = user,
                   .history = history,
                   .accounts = accounts}};
    ClientSession session{{link, mirror, replica, language, log, network, screen}};
    RemoteDataFiles remote{link};
};

}  // namespace nordkeep
