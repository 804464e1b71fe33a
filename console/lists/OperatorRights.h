#pragma once

#include "runtime/Role.h"

namespace nordkeep {

/// What the person at this copy may do now. A stand-alone copy and a server have no login: all is open there.
struct OperatorRights {
    Role role = Role::StandAlone;
    int level = 0;                  // of a client's user; 0 is nobody
    bool isConnectionLost = false;  // of a client; what changes alarms would not reach the server

    bool IsClient() const { return role == Role::Client; }
    /// Popups, comments, ends, prints.
    bool MayOperate() const { return !IsClient() || level > 0; }
    /// Translation files, object information, settings.
    bool MayEdit() const { return !IsClient() || level > 1; }
    /// Changes of alarms and objects: the right, and a server that hears of them.
    bool MayChange() const { return MayOperate() && !isConnectionLost; }
};

}  // namespace nordkeep
