#include "platform/OleDate.h"

#include <chrono>
#include <cmath>

namespace nordkeep {
namespace {

constexpr std::int64_t kDay = 86'400'000;
// The range of the calendar: 0100-01-01 to 9999-12-31.
constexpr double kFirstDay = -657434.0;
constexpr double kBehindLastDay = 2958466.0;

constexpr std::chrono::sys_days kDayZero{std::chrono::year{1899} / 12 / 30};

std::int64_t FloorDiv(std::int64_t value, std::int64_t by) {
    const std::int64_t quotient = value / by;
    return value % by < 0 ? quotient - 1 : quotient;
}

}  // namespace

std::int64_t OleDate::Milliseconds() const {
    if (!(days_ >= kFirstDay && days_ < kBehindLastDay)) return 0;
    // The time of day is the distance from the whole day in the direction of zero, also before day 0.
    const double whole = std::trunc(days_);
    const double fraction = std::fabs(days_ - whole);
    return static_cast<std::int64_t>(whole) * kDay + std::llround(fraction * static_cast<double>(kDay));
}

OleDate OleDate::FromMilliseconds(std::int64_t milliseconds) {
    const std::int64_t day = FloorDiv(milliseconds, kDay);
    const double fraction = static_cast<double>(milliseconds - day * kDay) / static_cast<double>(kDay);
    const auto days = static_cast<double>(day);
    return FromDays(day < 0 ? days - fraction : days + fraction);
}

OleDate OleDate::FromCivil(const CivilTime& civil, int milliseconds) {
    using namespace std::chrono;
    const std::int64_t month = static_cast<std::int64_t>(civil.month) - 1;
    const std::int64_t carriedYears = FloorDiv(month, 12);
    const auto firstOfMonth =
        sys_days{year{static_cast<int>(civil.year + carriedYears)} /
                 std::chrono::month{static_cast<unsigned>(month - carriedYears * 12 + 1)} / 1};
    const std::int64_t day = (firstOfMonth - kDayZero).count() + civil.day - 1;
    const std::int64_t seconds = civil.hour * 3600LL + civil.minute * 60LL + civil.second;
    return FromMilliseconds(day * kDay + seconds * 1000 + milliseconds);
}

OleDate OleDate::PlusMilliseconds(std::int64_t milliseconds) const {
    return FromMilliseconds(Milliseconds() + milliseconds);
}

OleDate OleDate::Midnight() const {
    return FromMilliseconds(FloorDiv(Milliseconds(), kDay) * kDay);
}

int OleDate::SecondOfDay() const {
    const std::int64_t ms = Milliseconds();
    return static_cast<int>((ms - FloorDiv(ms, kDay) * kDay) / 1000);
}

CivilTime OleDate::Civil() const {
    using namespace std::chrono;
    const year_month_day date{kDayZero + days{FloorDiv(Milliseconds(), kDay)}};
    const int second = SecondOfDay();
    return {.year = static_cast<int>(date.year()),
            .month = static_cast<int>(static_cast<unsigned>(date.month())),
            .day = static_cast<int>(static_cast<unsigned>(date.day())),
            .hour = second / 3600,
            .minute = second / 60 % 60,
            .second = second % 60};
}

int OleDate::Weekday() const {
    using namespace std::chrono;
    const weekday day{kDayZero + days{FloorDiv(Milliseconds(), kDay)}};
    return static_cast<int>(day.iso_encoding());
}

}  // namespace nordkeep
