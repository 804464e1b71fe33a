#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// What ports have to know of the rest of the system; handed in with each tick of the open timer.
struct PortConditions {
    bool isShuttingDown = false;
    bool arePortsDisabled = false;  // for this run, by a start-up switch
    bool isServer = false;
    bool isAnyClientConnected = false;
    bool isDispatchConfigured = false;
    bool isDispatchConnected = false;
    bool isNoPortOpen = false;  // and has not been for a while; for the operators
    Text mutedPort{};           // name of the port whose bytes are logged but not decoded; empty for none
};

}  // namespace nordkeep
