#pragma once

#include "store/FittingSlice.h"

#include <deque>
#include <functional>

namespace nordkeep {

/// What somebody does to many alarms at once. Each is written, and twenty thousand of them would keep every
/// telegram waiting for seconds: so they are done in slices, one a turn of the loop, in the order in which
/// they were asked for.
class BulkDeeds {
 public:
    struct Deed {
        std::size_t count = 0;
        std::function<void(std::size_t)> doOne{};  // from 0 on
        std::function<void()> finish{};
    };

    explicit BulkDeeds(const Clock& clock) : slice_(clock, kFirst) {}

    /// A few are done at once.
    void Begin(Deed deed);
    /// A slice. True while more is to be done.
    bool Continue();

 private:
    static constexpr std::size_t kFirst = 50;
    struct Running {
        Deed deed{};
        std::size_t next = 0;
    };

    std::deque<Running> deeds_{};
    FittingSlice slice_;
};

}  // namespace nordkeep
