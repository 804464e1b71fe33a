#pragma once

#include "platform/Signals.h"

#include <functional>
#include <memory>

class QSocketNotifier;

namespace nordkeep {

/// Turns a caught signal into an event of the loop.
class QtSignalWatch {
 public:
    QtSignalWatch(Signals& caught, std::function<void()> onSignal);
    ~QtSignalWatch();

 private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace nordkeep
