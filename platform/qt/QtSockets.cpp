#include "platform/qt/QtSockets.h"

#include "platform/qt/QtTcpSocket.h"
#include "platform/qt/QtUdpSocket.h"

namespace nordkeep {

QtSockets::QtSockets() : callers_(std::make_shared<WaitingCallers>()) {}

std::unique_ptr<Winsock> QtSockets::NewSocket(SocketKind kind) {
    if (kind == SocketKind::Udp) return std::make_unique<QtUdpSocket>();
    return std::make_unique<QtTcpSocket>(callers_);
}

}  // namespace nordkeep
