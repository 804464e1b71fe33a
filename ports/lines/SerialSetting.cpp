#include "ports/lines/SerialSetting.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {

bool IsSerialSetting(TextView text) {
    static constexpr std::array<TextView, 5> kParities = {"N", "E", "O", "M", "S"};
    static constexpr std::array<TextView, 4> kDataBits = {"5", "6", "7", "8"};
    static constexpr std::array<TextView, 3> kStopBits = {"1", "1.5", "2"};
    const auto isOneOf = [](const auto& words, TextView word) {
        return std::ranges::any_of(words, [word](TextView known) { return EqualsNoCase(known, word); });
    };
    if (TrimBlanks(text).empty() || TrimBlanks(text) == "0") return true;
    const std::vector<Text> parts = Split(text, ',');
    const auto part = [&](std::size_t place) { return TrimBlanks(parts[place]); };
    if (parts.size() > 4 || !IsNumeric(part(0)) || LeadingNumber(part(0)) < 1) return false;
    return (parts.size() < 2 || isOneOf(kParities, part(1))) &&
           (parts.size() < 3 || isOneOf(kDataBits, part(2))) &&
           (parts.size() < 4 || isOneOf(kStopBits, part(3)));
}

}  // namespace nordkeep
