#pragma once

#include "ports/Port.h"

#include <memory>
#include <vector>

namespace nordkeep {

inline constexpr std::size_t kMostPorts = 20;

/// The names of the ports: those of the files Settings\Port*.ini up to their first ".", each once.
std::vector<Text> PortNames(const FileTree& dataFolder);

/// All ports of this copy, at most 20, in the order of their settings files.
class PortList {
 public:
    /// Makes and initialises a port for every Settings\Port*.ini whose type is not "NONE".
    void Discover(const PortParts& parts);
    void Tick(int tickMs, const PortConditions& conditions);
    /// One tick of the timer that polls.
    void CyclicHTTPCleanup(int tickMs, const PortConditions& conditions);
    /// Behind a crash: gives each port what it had acknowledged and held back. What belonged to a port that
    /// is gone becomes an event all the same.
    void TakeUpHeld(const PortParts& parts);
    /// Takes in what formats still hold back, at the end of the program.
    void FinishAll();
    void CloseAll();

    std::vector<PortBinding*> Bindings() const;
    const std::vector<std::unique_ptr<cPort>>& Ports() const { return ports_; }

 private:
    void AssignSlot(const PortParts& parts, cPort& port);

    std::vector<std::unique_ptr<cPort>> ports_{};
};

}  // namespace nordkeep
