#pragma once

#include "console/boxes/SimulationBox.h"
#include "console/window/DebugPage.h"
#include "network/NetworkServer.h"
#include "ports/PortList.h"

namespace nordkeep {

/// The ports as the operator's place sees them. A client has none.
class OperatorPorts final : public DebugLines, public SimulatedPorts {
 public:
    /// The list may be built behind this; nothing is asked of it before NoteMade.
    explicit OperatorPorts(PortList& ports) : ports_(ports) {}
    /// All ports are in the list, or it has changed.
    void NoteMade();

    std::vector<PortInTree> InTree() const;
    std::vector<DebugPort> ToDebug() const;
    bool HasClock() const { return hasClock_; }
    void SetClocks();

    void SendOnPort(const Text& portName, TextView bytes) override;
    std::vector<SimulatedPort> PortsToSimulate() const override;

 private:
    PortList& ports_;
    bool hasClock_ = false;
};

}  // namespace nordkeep
