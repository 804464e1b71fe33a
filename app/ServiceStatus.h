#pragma once

#include "platform/EventLoop.h"
#include "platform/ServiceNotify.h"
#include "runtime/Language.h"

#include <memory>

namespace nordkeep {

/// What the service manager is told of this copy: ready, alive, how it fares, and that it stops. Without a
/// service manager nothing is done.
class ServiceStatus {
 public:
    struct Figures {
        std::size_t portsOpen = 0;
        std::size_t ports = 0;
        std::size_t newAlarms = 0;
        Text wrong{};  // what the window says above its lists
    };
    ServiceStatus(ServiceNotify& manager, EventLoop& loop, const Language& language);

    /// From now on signs of life are given, out of the event loop: a loop that hangs gives none.
    void Ready(const Figures& figures);
    /// To be called about once a second.
    void Update(const Figures& figures);
    void Stopping();

 private:
    void Tell(const std::string& state);
    std::string StatusLine(const Figures& figures) const;

    ServiceNotify& manager_;
    const Language& language_;
    std::unique_ptr<Timer> watchdog_;
    std::string told_{};
    std::string waiting_{};  // could not be delivered yet
};

}  // namespace nordkeep
