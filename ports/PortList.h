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
    /// Takes in what has changed in the settings files: a changed port is made anew, a new one is opened, one
    /// that is gone or of type "NONE" is closed; the others go on. What a port was given before stays alive
    /// behind it. None while a port is in the middle of something, so that it has to be asked for again;
    /// else whether anything has changed.
    std::optional<bool> Renew(const PortParts& parts);
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
    /// The senders that share the port of this name and are told apart, the silent ones first, no more than
    /// people read; none for a name that no port has.
    std::vector<LineAccount> AccountsOf(const Text& name) const;

 private:
    using OwnedPort = std::unique_ptr<cPort>;

    /// Makes and initialises a port, which has no slot yet; none for the type "NONE".
    OwnedPort Make(const PortParts& parts, const Text& name);
    OwnedPort MakeAnew(const PortParts& parts, const cPort& port);
    void AssignSlot(const PortParts& parts, cPort& port);
    void EndPort(const PortParts& parts, cPort& port);
    bool RenewKnown(const PortParts& parts);
    bool TakeInNew(const PortParts& parts);

    std::vector<OwnedPort> ports_{};
    /// Closed for good. Replies and posted work may still point to them.
    std::vector<OwnedPort> retired_{};
    int ticking_ = 0;  // walks over the ports that are under way
};

}  // namespace nordkeep
