#pragma once

#include "network/NetworkServer.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"
#include "tests/doubles/TestCore.h"

#include <algorithm>

namespace nordkeep {

/// What a server and a client of the tests have alike: a data folder of their own, and the network below.
struct NetworkGround {
    NetworkGround(const Clock& time_, EventLoop& loop_, SocketFactory& sockets_, NetworkSettings network_)
        : time(time_), loop(loop_), sockets(sockets_), network(std::move(network_)) {
        log.SetRowListener([this](const LogRow& row) { logged.push_back(row.text); });
    }

    /// What a core stands on in this role; `replica` tells the other copies.
    template <class Replica>
    CoreGround Below(Role role, Replica& replica) {
        return {.dataFolder = folder.Tree(),
                .files = files,
                .language = language,
                .log = log,
                .clock = time,
                .loop = loop,
                .sockets = sockets,
                .role = role,
                .alarmReplica = &replica,
                .objectReplica = &replica};
    }
    bool HasLogged(const Text& text) const {
        return std::find(logged.begin(), logged.end(), text) != logged.end();
    }

    const Clock& time;
    EventLoop& loop;
    SocketFactory& sockets;
    TempFolder folder{};
    Settings files{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> logged{};
    NetworkSettings network;
    NetworkTraffic traffic{folder.Tree(), time};
};

}  // namespace nordkeep
