#pragma once

#include "network/NetworkSettings.h"
#include "network/NetworkTraffic.h"
#include "platform/EventLoop.h"
#include "platform/Winsock.h"
#include "runtime/Language.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// What both sides of the connection between copies work with; all of it outlives them.
struct NetworkParts {
    SocketFactory& sockets;
    EventLoop& loop;
    const Clock& clock;
    const Language& language;
    SysLog& log;
    const NetworkTraffic& traffic;
    const NetworkSettings& settings;
    SocketTls tls{};  // of all connections
};

}  // namespace nordkeep
