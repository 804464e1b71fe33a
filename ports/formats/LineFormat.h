#pragma once

#include "ports/formats/ServiceTick.h"
#include "ports/formats/TelegramStep.h"

namespace nordkeep {

/// What the bytes of one line mean, and what is due on the line as time goes. A format keeps the state of its
/// line and touches nothing else: the port acts on the steps.
class LineFormat {
 public:
    virtual ~LineFormat() = default;
    /// Looks at the front of the received text.
    virtual TelegramStep Next(TextView received, OleDate now) = 0;
    /// What has become due at this tick of the port, whether the line is open or not. `reply` is to be sent.
    virtual TelegramStep Due(const ServiceTick& tick) = 0;
};

}  // namespace nordkeep
