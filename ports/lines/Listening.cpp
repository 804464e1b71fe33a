#include "ports/lines/Listening.h"

#include "platform/AnyAddress.h"

namespace nordkeep {

void ListenAsSet(Winsock& server, PortLog& log, const Text& place, TextView name) {
    const LineSettings& line = log.Line();
    server.Close();
    if (!log.HasListenNumber(place, name)) return;
    server.SetLocalPort(line.PortNumber);
    const Text& address = line.BindSocketToAddress;
    const bool isBound = server.Bind(line.PortNumber, address.empty() ? Text(kAnyAddress) : address);
    if (isBound && server.Listen()) return log.Opened(place, name);
    log.OpenFailed(place, "TCP " + std::to_string(line.PortNumber) + ": " + server.LastError(), name);
}

}  // namespace nordkeep
