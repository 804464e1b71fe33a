#include "platform/posix/SystemClock.h"

#include "platform/posix/LocalTime.h"

#include <time.h>

namespace nordkeep {

SystemClock::SystemClock() {
    ::tzset();
}

OleDate SystemClock::Now() const {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (now.tv_sec != second_) {
        second_ = now.tv_sec;
        beginOfSecond_ = LocalTime({.tv_sec = now.tv_sec, .tv_nsec = 0});
    }
    return beginOfSecond_.PlusMilliseconds(now.tv_nsec / 1'000'000);
}

std::int64_t SystemClock::MonotonicMs() const {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1'000'000;
}

std::int64_t SystemClock::MonotonicUs() const {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1'000'000LL + now.tv_nsec / 1'000;
}

std::int64_t SystemClock::UtcMs() const {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1'000'000;
}

OleDate SystemClock::LocalOf(std::int64_t utcMs) const {
    return LocalTime({.tv_sec = utcMs / 1000, .tv_nsec = utcMs % 1000 * 1'000'000});
}

}  // namespace nordkeep
