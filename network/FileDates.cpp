#include "network/FileDates.h"

#include <algorithm>
#include <limits>

namespace nordkeep {
namespace {

constexpr CivilTime kStart{.year = 1970, .month = 1, .day = 1};
constexpr std::int64_t kHour = 3600;

}  // namespace

// In whole numbers: in days as a fraction about a third of all times would be off by a second.
std::int32_t FileDateToLong(OleDate date) {
    const std::int64_t ms = date.Milliseconds() - OleDate::FromCivil(kStart).Milliseconds();
    if (date.IsNever() || ms < 0) return 0;
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(ms / 1000 - kHour, 0, kMost));
}

OleDate LongToFileDate(std::int32_t value) {
    if (value == 0 || value == -1) return {};
    return OleDate::FromCivil(kStart).PlusSeconds(value);
}

}  // namespace nordkeep
