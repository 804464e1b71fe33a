#include "runtime/Dates.h"

#include "runtime/Fields.h"

#include <array>
#include <utility>

namespace nordkeep {
namespace {

bool IsLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Walks a picture once; remembers whether the last letters were hours, since M behind them is minutes.
class PictureWriter {
 public:
    PictureWriter(const CivilTime& civil, TextView picture) : civil_(civil), rest_(picture) {}

    Text Write() {
        while (!rest_.empty()) Step();
        return std::move(out_);
    }

 private:
    void Step() {
        const char c = rest_.front();
        if (c == '"') return Quoted();
        if (c == '\\') return Escaped();
        if (IsLetter(c)) return Letters(UpperCase(c));
        out_ += c == '/' ? '-' : c;
        rest_.remove_prefix(1);
    }

    void Quoted() {
        rest_.remove_prefix(1);
        const std::size_t end = rest_.find('"');
        out_ += rest_.substr(0, end);
        rest_ = end == TextView::npos ? TextView{} : rest_.substr(end + 1);
    }

    void Escaped() {
        if (rest_.size() > 1) out_ += rest_[1];
        rest_.remove_prefix(rest_.size() > 1 ? 2 : 1);
    }

    void Letters(char letter) {
        std::size_t run = 1;
        while (run < rest_.size() && UpperCase(rest_[run]) == letter) ++run;
        const std::size_t longest = letter == 'Y' ? 4 : 2;
        if (run > longest) run = longest;
        if (!Field(letter, run)) {
            out_ += rest_.substr(0, run);
        }
        isBehindHours_ = letter == 'H';
        rest_.remove_prefix(run);
    }

    bool Field(char letter, std::size_t run) {
        switch (letter) {
            case 'Y':
                return Year(run);
            case 'M':
                return Number(isBehindHours_ ? civil_.minute : civil_.month, run);
            case 'D':
                return Number(civil_.day, run);
            case 'H':
                return Number(civil_.hour, run);
            case 'N':
                return Number(civil_.minute, run);
            case 'S':
                return Number(civil_.second, run);
            default:
                return false;
        }
    }

    bool Year(std::size_t run) {
        if (run == 4) return Number(civil_.year, 4);
        return run >= 2 && Number(civil_.year % 100, 2);
    }

    bool Number(int value, std::size_t width) {
        out_ += Digits(value, static_cast<int>(width));
        return true;
    }

    CivilTime civil_;
    TextView rest_;
    Text out_{};
    bool isBehindHours_ = false;
};

constexpr std::array<std::pair<TextView, TextView>, 8> kNamedPictures = {{{"SHORT DATE", "YYYY-MM-DD"},
                                                                          {"LONG DATE", "YYYY-MM-DD"},
                                                                          {"MEDIUM DATE", "YYYY-MM-DD"},
                                                                          {"LONG TIME", "HH:NN:SS"},
                                                                          {"SHORT TIME", "HH:NN"},
                                                                          {"MEDIUM TIME", "HH:NN"},
                                                                          {"GENERAL DATE", ""},
                                                                          {"", ""}}};

int DigitsAt(TextView text, long start, long length) {
    int number = 0;
    for (const char c : Substring(text, start, length)) {
        if (c < '0' || c > '9') break;
        number = number * 10 + (c - '0');
    }
    return number;
}

bool IsInRange(const CivilTime& t) {
    return t.year >= 100 && t.month >= 1 && t.month <= 12 && t.day >= 1 && t.day <= 31 && t.hour < 24 &&
           t.minute < 60 && t.second < 60;
}

}  // namespace

Text FormatDate(OleDate date, TextView picture) {
    for (const auto& [name, meaning] : kNamedPictures) {
        if (!EqualsNoCase(picture, name)) continue;
        if (meaning.empty()) return GeneralDate(date);
        picture = meaning;
        break;
    }
    return PictureWriter(date.Civil(), picture).Write();
}

Text GeneralDate(OleDate date) {
    const CivilTime t = date.Civil();
    const bool isDayZero = t.year == 1899 && t.month == 12 && t.day == 30;
    const bool isMidnight = t.hour == 0 && t.minute == 0 && t.second == 0;
    if (isDayZero) return FormatDate(date, "HH:NN:SS");
    return FormatDate(date, isMidnight ? "YYYY-MM-DD" : "YYYY-MM-DD HH:NN:SS");
}

Text CompactTime(OleDate date) {
    return FormatDate(date, "YYYYMMDDHHNNSS");
}

OleDate ParseCompactTime(TextView digits) {
    const CivilTime t{.year = DigitsAt(digits, 1, 4),
                      .month = DigitsAt(digits, 5, 2),
                      .day = DigitsAt(digits, 7, 2),
                      .hour = DigitsAt(digits, 9, 2),
                      .minute = DigitsAt(digits, 11, 2),
                      .second = DigitsAt(digits, 13, 2)};
    return t.year < 100 ? OleDate() : OleDate::FromCivil(t);
}

std::optional<OleDate> ParseDateTime(TextView text) {
    struct Place {
        long start;
        long length;
    };
    constexpr std::array<Place, 6> kPlaces = {{{1, 4}, {6, 2}, {9, 2}, {12, 2}, {15, 2}, {18, 2}}};
    std::array<int, 6> numbers{};
    for (std::size_t i = 0; i < kPlaces.size(); ++i) {
        const TextView digits = Substring(text, kPlaces[i].start, kPlaces[i].length);
        const bool isComplete = digits.size() == static_cast<std::size_t>(kPlaces[i].length);
        if (isComplete && IsNumeric(digits)) {
            numbers[i] = LeadingInt32(digits);
        } else if (i < 3 || !digits.empty()) {
            return std::nullopt;
        }
    }
    const CivilTime t{numbers[0], numbers[1], numbers[2], numbers[3], numbers[4], numbers[5]};
    if (!IsInRange(t)) return std::nullopt;
    const OleDate date = OleDate::FromCivil(t);
    // A day that the month does not have has been carried into the next one.
    return date.Civil() == t ? std::optional(date) : std::nullopt;
}

}  // namespace nordkeep
