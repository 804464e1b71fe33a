#pragma once

#include "platform/ServiceNotify.h"
#include "platform/posix/Descriptor.h"

namespace nordkeep {

/// The datagram socket that the service manager names in the environment. The variables are taken out of it,
/// so that programs started from here do not speak for this one.
class NotifySocket final : public ServiceNotify {
 public:
    NotifySocket();
    bool IsSupervised() const override { return static_cast<bool>(socket_); }
    int WatchdogMs() const override { return watchdogMs_; }
    bool Tell(const std::string& state) override;

 private:
    std::string address_{};  // a path, or an abstract name that begins with NUL
    Descriptor socket_{};
    int watchdogMs_ = 0;
};

}  // namespace nordkeep
