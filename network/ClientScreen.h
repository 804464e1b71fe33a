#pragma once

#include "network/messages/Messages.h"

namespace nordkeep {

struct cAlarm;

/// How a client stands to its server.
enum class LinkState {
    Connected,
    Lost,        // what the lists show may be out of date; the next try comes by itself
    Connecting,  // a try is under way
    Ended,       // the program is to end
};

/// Who works at a client, as its server has said; level 0 is nobody.
using ClientUser = LoginAnswer;

/// What the network tells the screen of a client.
class ClientScreen {
 public:
    virtual ~ClientScreen() = default;
    virtual void ShowLinkState(LinkState state) = 0;
    /// The user has changed: rights and title follow.
    virtual void ShowUser(const ClientUser& user) = 0;
    virtual void AskForLogin() = 0;
    /// The tree is about to be renewed: what is selected in it is to be remembered.
    virtual void ForgetPortTree() = 0;
    /// Shows a tree and selects again what was remembered. Requests may be sent from here.
    virtual void ShowPortTree(const std::vector<PortTreeNode>& nodes) = 0;
    /// A new event has come, in whatever status: what it opens, sounds and prints at this place. Requests may
    /// be sent from here.
    virtual void PresentNewEvent(cAlarm& alarm) = 0;
    /// The program is to end with a failure; shows the text first unless it is empty.
    virtual void EndProgram(const Text& message) = 0;
};

}  // namespace nordkeep
