#pragma once

#include "platform/Winsock.h"
#include "ports/lines/PortLog.h"

namespace nordkeep {

/// Has a socket listen as the settings of its line say, with a line in the log; `place` and `name` are what
/// that line shows.
void ListenAsSet(Winsock& server, PortLog& log, const Text& place, TextView name);

}  // namespace nordkeep
