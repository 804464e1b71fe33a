#include "app/OperatorPorts.h"

#include <algorithm>

namespace nordkeep {

std::vector<PortInTree> OperatorPorts::InTree() const {
    std::vector<PortInTree> tree;
    for (const auto& port : ports_.Ports()) {
        const cPort& known = *port;
        tree.push_back({known.Event().m_PortDescription, &known.Event().binding});
    }
    return tree;
}

std::vector<DebugPort> OperatorPorts::ToDebug() const {
    std::vector<DebugPort> debugged;
    for (const auto& port : ports_.Ports()) {
        const cPort& known = *port;
        debugged.push_back({.name = known.Event().PortName, .description = known.Event().m_PortDescription});
    }
    return debugged;
}

void OperatorPorts::NoteMade() {
    hasClock_ = std::ranges::any_of(ports_.Ports(), [](const auto& port) { return port->HasClock(); });
}

void OperatorPorts::SetClocks() {
    for (const auto& port : ports_.Ports()) port->RequestClock();
}

void OperatorPorts::SendOnPort(const Text& portName, TextView bytes) {
    for (const auto& port : ports_.Ports()) {
        if (port->Event().PortName == portName) port->SendBytes(bytes);
    }
}

std::vector<SimulatedPort> OperatorPorts::PortsToSimulate() const {
    std::vector<SimulatedPort> known;
    for (const auto& port : ports_.Ports()) {
        const cPort& one = *port;
        known.push_back({one.Event().m_PortDescription, &one.Event()});
    }
    return known;
}

}  // namespace nordkeep
