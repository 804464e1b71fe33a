#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace nordkeep {

/// Counts durations by their length.
class Histogram {
 public:
    /// Upper bounds of the classes in microseconds; what is longer is in a last class of its own.
    static constexpr std::array<std::int64_t, 14> kBoundsUs = {50,      100,     250,       500,      1'000,
                                                               2'500,   5'000,   10'000,    25'000,   50'000,
                                                               100'000, 250'000, 1'000'000, 5'000'000};

    void Observe(std::int64_t us) {
        std::size_t place = 0;
        while (place < kBoundsUs.size() && us > kBoundsUs[place]) ++place;
        ++counts_[place];
        sumUs_ += us;
    }
    /// How many were in this class; the last one is at kBoundsUs.size().
    std::uint64_t CountIn(std::size_t place) const { return counts_[place]; }
    std::int64_t SumUs() const { return sumUs_; }

 private:
    std::array<std::uint64_t, kBoundsUs.size() + 1> counts_{};
    std::int64_t sumUs_ = 0;
};

}  // namespace nordkeep
