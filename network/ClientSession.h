#pragma once

#include "network/ClientReplica.h"
#include "network/Mirror.h"

namespace nordkeep {

/// What the start of a client has found.
struct ClientStart {
    Text failure{};         // not empty: to be told, and the program ends
    Text serverSettings{};  // the main settings of the server
};
/// Connects for the first time, checks the version and fetches the settings that the centre shares.
ClientStart StartClient(ServerLink& link, const Language& language, SysLog& log);

/// Keeps a client with its server: signs of life, the loss of the connection, and the tries to get it back.
class ClientSession {
 public:
    struct Needs {
        ServerLink& link;
        Mirror& mirror;
        ClientReplica& replica;
        const Language& language;
        SysLog& log;
        const NetworkSettings& settings;
        ClientScreen& screen;
    };
    explicit ClientSession(const Needs& needs) : needs_(needs) {}

    /// Fetches everything after StartClient: sets and tree, the login of the settings, events. A loss on the
    /// way is found by the next tick.
    void Begin() { FetchAll(); }
    LinkState State() const { return state_; }

    /// Counts the time of a tick of the display's timer. Does nothing when it is called from inside itself.
    void Tick(int elapsedMs);
    /// The commands of the operator while the connection is lost.
    void ReconnectNow();
    void EndProgram();

 private:
    void KeepAlive(int elapsedMs);
    void NoteLoss();
    bool Reconnect();
    void FetchAll();
    void AskForExtensions();
    bool IsAsking() const { return askedMs_ >= 0; }
    void SetState(LinkState state);

    Needs needs_;
    LinkState state_ = LinkState::Connected;
    int keepAliveMs_ = 0;
    int lostMs_ = 0;
    int askedMs_ = -1;          // since message 30 went; -1 when no answer is awaited
    bool isPlainNext_ = false;  // the last connection broke over message 30
};

}  // namespace nordkeep
