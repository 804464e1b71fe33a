#pragma once

#include "ports/formats/ServiceTick.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/CentreState.h"

#include <memory>

namespace nordkeep {

/// The clocks at the moment when a format looks at its line.
struct LineClock {
    OleDate now{};
    OleDate utc{};
    std::int64_t monotonicMs = 0;  // for elapsed times, which a change of the clock must not bend
};

/// What the bytes of one line mean, and what is due on the line as time goes. A format keeps the state of its
/// line and touches nothing else: the port acts on the steps.
class LineFormat {
 public:
    virtual ~LineFormat() = default;
    /// Looks at the front of the received text.
    virtual TelegramStep Next(TextView received, const LineClock& clock) = 0;
    /// What has become due at this tick of the port, whether the line is open or not. `reply` is to be sent.
    virtual TelegramStep Due(const ServiceTick& tick) = 0;
    /// One of its own for a further caller of the port, whose telegrams it puts together; none when this one
    /// serves all callers. `Due` is asked of this one only.
    virtual std::unique_ptr<LineFormat> ForAnotherCaller() const { return {}; }
    /// The senders that it tells apart, by name; none where a line is one sender.
    virtual std::vector<LineAccount> Accounts() const { return {}; }
    /// What has become of a step with a receipt. False when its reply must not leave: what it repeats was not
    /// stored.
    virtual bool OnStored(std::uint64_t /*receipt*/, bool isStored) { return isStored; }
};

}  // namespace nordkeep
