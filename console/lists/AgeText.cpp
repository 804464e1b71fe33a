#include "console/lists/AgeText.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kMinute = 60;
constexpr int kHour = 3600;
constexpr int kDay = 86400;

Text Pair(std::int64_t value) {
    return Digits(value, 2);
}

}  // namespace

Text SpanText(std::int64_t seconds) {
    seconds = std::max<std::int64_t>(0, seconds);
    if (seconds < kMinute) return std::to_string(seconds) + " s";
    const std::int64_t minutes = seconds / kMinute;
    if (seconds < kHour) return std::to_string(minutes) + ":" + Pair(seconds % kMinute);
    const std::int64_t hours = seconds / kHour;
    if (seconds < kDay) {
        return std::to_string(hours) + ":" + Pair(minutes % kMinute) + ":" + Pair(seconds % kMinute);
    }
    return std::to_string(seconds / kDay) + " d " + Pair(hours % 24) + ":" + Pair(minutes % kMinute);
}

Text AgeText(OleDate from, OleDate to) {
    return SpanText((to.Milliseconds() - from.Milliseconds()) / 1000);
}

}  // namespace nordkeep
