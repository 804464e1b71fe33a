#pragma once

#include "platform/Winsock.h"

namespace nordkeep {

class WaitingCallers;

/// Sockets of the toolkit's network library. Socket slots may outlive the factory.
class QtSockets : public SocketFactory {
 public:
    QtSockets();
    std::unique_ptr<Winsock> NewSocket(SocketKind kind) override;

 private:
    std::shared_ptr<WaitingCallers> callers_;
};

}  // namespace nordkeep
