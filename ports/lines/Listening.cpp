#include "ports/lines/Listening.h"

namespace nordkeep {

void ListenAsSet(Winsock& server, PortLog& log, const Text& place, TextView name) {
    const LineSettings& line = log.Line();
    server.Close();
    if (!log.HasListenNumber(place, name)) return;
    server.SetLocalPort(line.PortNumber);
    const Text& address = line.BindSocketToAddress;
    const bool isBound = address.empty() || server.Bind(line.PortNumber, address);
    if (isBound && server.Listen()) return log.Opened(place, name);
    log.OpenFailed(place, "TCP " + std::to_string(line.PortNumber) + ": " + server.LastError(), name);
}

}  // namespace nordkeep
