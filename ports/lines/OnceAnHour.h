#pragma once

#include <cstdint>
#include <optional>

namespace nordkeep {

/// For log lines about what may repeat without end.
class OnceAnHour {
 public:
    /// True for the first time, and then when the last true answer is an hour old.
    bool IsDue(std::int64_t nowMs) {
        if (lastMs_ && nowMs - *lastMs_ < 3'600'000) return false;
        lastMs_ = nowMs;
        return true;
    }

 private:
    std::optional<std::int64_t> lastMs_{};
};

}  // namespace nordkeep
