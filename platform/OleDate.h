#pragma once

#include <compare>
#include <cstdint>

namespace nordkeep {

/// The six numbers of a date with time, as files and the wire carry them.
struct CivilTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

/// A local wall-clock time as days since 1899-12-30, the time of day as fraction; 0 means "never".
///
/// The double is kept as it was read, so that a record survives a rewrite byte for byte; everything else
/// (comparison, arithmetic, splitting) goes by whole milliseconds, to which the double is rounded.
/// Values outside the years 100 to 9999, and what is no number at all, count as "never" there.
class OleDate {
 public:
    constexpr OleDate() = default;
    static constexpr OleDate FromDays(double days) {
        OleDate date;
        date.days_ = days;
        return date;
    }
    /// Milliseconds since 1899-12-30 00:00.
    static OleDate FromMilliseconds(std::int64_t milliseconds);
    /// Out-of-range numbers are carried over (minute 75 is the next hour's quarter past, month 13 January).
    static OleDate FromCivil(const CivilTime& civil, int milliseconds = 0);

    constexpr double Days() const { return days_; }
    std::int64_t Milliseconds() const;
    bool IsNever() const { return Milliseconds() == 0; }

    OleDate PlusMilliseconds(std::int64_t milliseconds) const;
    OleDate PlusSeconds(std::int64_t seconds) const { return PlusMilliseconds(seconds * 1000); }
    OleDate PlusMinutes(std::int64_t minutes) const { return PlusSeconds(minutes * 60); }
    OleDate PlusDays(std::int64_t days) const { return PlusSeconds(days * 86400); }

    /// Midnight of the same day.
    OleDate Midnight() const;
    /// 0 to 86399; the fraction of the second is cut.
    int SecondOfDay() const;
    /// Split after cutting to the whole second.
    CivilTime Civil() const;
    /// 1 Monday to 7 Sunday.
    int Weekday() const;

    friend std::strong_ordering operator<=>(const OleDate& a, const OleDate& b) {
        return a.Milliseconds() <=> b.Milliseconds();
    }
    friend bool operator==(const OleDate& a, const OleDate& b) {
        return a.Milliseconds() == b.Milliseconds();
    }

 private:
    double days_ = 0;
};

}  // namespace nordkeep
