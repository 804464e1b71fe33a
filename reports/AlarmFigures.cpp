#include "reports/AlarmFigures.h"

#include <algorithm>

namespace nordkeep {

Durations DurationsOf(std::vector<std::int32_t>& seconds) {
    if (seconds.empty()) return {};
    // The smallest value that so many of a hundred do not exceed.
    const auto value = [&](std::size_t percent) {
        const auto place =
            seconds.begin() + static_cast<std::ptrdiff_t>((seconds.size() * percent + 99) / 100) - 1;
        std::nth_element(seconds.begin(), place, seconds.end());
        return *place;
    };
    return {.count = static_cast<std::int32_t>(seconds.size()),
            .median = value(50),
            .ofTwenty = value(95),
            .worst = *std::ranges::max_element(seconds)};
}

std::int32_t AlarmFigures::WorstBin() const {
    return bins.empty() ? 0 : *std::ranges::max_element(bins);
}

std::int32_t AlarmFigures::FloodShare(OleDate now) const {
    const std::int64_t seconds = (std::min(to, now).Milliseconds() - from.Milliseconds()) / 1000;
    return seconds <= 0 ? 0
                        : static_cast<std::int32_t>(
                              std::min<std::int64_t>(1000, std::int64_t{floodSeconds} * 1000 / seconds));
}

}  // namespace nordkeep
