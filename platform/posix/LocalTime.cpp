#include "platform/posix/LocalTime.h"

namespace nordkeep {

OleDate LocalTime(const timespec& moment) {
    std::tm parts{};
    if (::localtime_r(&moment.tv_sec, &parts) == nullptr) return {};
    const CivilTime civil{.year = parts.tm_year + 1900,
                          .month = parts.tm_mon + 1,
                          .day = parts.tm_mday,
                          .hour = parts.tm_hour,
                          .minute = parts.tm_min,
                          .second = parts.tm_sec};
    return OleDate::FromCivil(civil, static_cast<int>(moment.tv_nsec / 1'000'000));
}

}  // namespace nordkeep
