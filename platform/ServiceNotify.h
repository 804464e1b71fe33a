#pragma once

#include <string>

namespace nordkeep {

/// Tells the service manager that has started this program how it is; without one it tells nobody.
class ServiceNotify {
 public:
    virtual ~ServiceNotify() = default;
    /// False when nobody wants to know.
    virtual bool IsSupervised() const = 0;
    /// How often a sign of life is expected, in ms; 0 for never.
    virtual int WatchdogMs() const = 0;
    /// Lines of the form NAME=value, in UTF-8. False when they could not be delivered at this moment.
    virtual bool Tell(const std::string& state) = 0;
};

}  // namespace nordkeep
