#pragma once

#include "platform/Winsock.h"

#include <map>

namespace nordkeep {

/// The callers that have been let in by the system and are not yet accepted by a socket slot. A request is
/// good for one slot of the same factory, once, and only until the listener's event has been handled.
class WaitingCallers {
 public:
    ~WaitingCallers();
    SocketRequest Add(int descriptor);
    /// The caller's descriptor, which is then the taker's own; -1 for a request that is not, or no longer,
    /// good.
    int Take(SocketRequest request);
    /// Resets the connection of a caller whom nobody has taken.
    void Refuse(SocketRequest request);

 private:
    std::map<SocketRequest, int> waiting_{};
    SocketRequest last_ = 0;
};

}  // namespace nordkeep
