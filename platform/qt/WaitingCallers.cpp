#include "platform/qt/WaitingCallers.h"

#include <sys/socket.h>
#include <unistd.h>

namespace nordkeep {

WaitingCallers::~WaitingCallers() {
    while (!waiting_.empty()) Refuse(waiting_.begin()->first);
}

SocketRequest WaitingCallers::Add(int descriptor) {
    waiting_[++last_] = descriptor;
    return last_;
}

int WaitingCallers::Take(SocketRequest request) {
    const auto caller = waiting_.extract(request);
    return caller ? caller.mapped() : -1;
}

void WaitingCallers::Refuse(SocketRequest request) {
    const int descriptor = Take(request);
    if (descriptor < 0) return;
    const linger resetAtOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(descriptor, SOL_SOCKET, SO_LINGER, &resetAtOnce, sizeof resetAtOnce);
    ::close(descriptor);
}

}  // namespace nordkeep
