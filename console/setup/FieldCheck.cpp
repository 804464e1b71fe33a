#include "console/setup/FieldCheck.h"

#include "store/AlarmText.h"

#include <algorithm>
#include <cmath>

namespace nordkeep {
namespace {

constexpr int kCaptionNoNumber = 3869;
constexpr int kCaptionBetween = 3870;
constexpr int kCaptionAtLeast = 3871;
constexpr int kCaptionNoChoice = 3872;
constexpr int kCaptionNoColor = 3873;
constexpr int kCaptionNoFile = 3874;
constexpr int kCaptionNoRange = 3875;

bool IsWholeNumber(TextView text) {
    const bool hasSign = !text.empty() && (text.front() == '-' || text.front() == '+');
    return IsNumeric(text.substr(hasSign ? 1 : 0));
}

Text FaultOfNumber(const DescribedKey& key, TextView value, const Captions& captions) {
    if (!IsWholeNumber(value)) return captions(kCaptionNoNumber);
    const std::int64_t number = LeadingNumber(value);
    if (number >= key.low && number <= key.high) return {};
    const Text low = std::to_string(key.low);
    if (key.high == INT_MAX && number <= key.high) return captions(kCaptionAtLeast, {low});
    return captions(kCaptionBetween, {low, std::to_string(key.high)});
}

bool IsPriorities(TextView value) {
    if (value.empty() || value == "-1") return true;
    const std::size_t dash = value.find('-');
    if (dash == TextView::npos) return IsNumeric(value);
    return IsNumeric(TrimBlanks(value.substr(0, dash))) && IsNumeric(TrimBlanks(value.substr(dash + 1)));
}

bool IsChoice(const DescribedKey& key, TextView value) {
    return std::ranges::any_of(key.choices,
                               [value](const DescribedChoice& choice) { return choice.value == value; });
}

/// A file that a path names; a program without a path is looked for elsewhere.
bool IsMissingFile(TextView value, const CheckGround& ground) {
    if (!ground.seesFiles || value.empty()) return false;
    return !StampOf(ground.dataFolder.ResolveSetting(value)).Exists();
}

double Linear(std::uint8_t part) {
    const double share = part / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(Rgb color) {
    return 0.2126 * Linear(color.red) + 0.7152 * Linear(color.green) + 0.0722 * Linear(color.blue);
}

Text HexText(Rgb color) {
    constexpr TextView kDigits = "0123456789ABCDEF";
    Text text;
    for (const std::uint8_t part : {color.red, color.green, color.blue}) {
        text += kDigits[part / 16];
        text += kDigits[part % 16];
    }
    return text;
}

bool IsPairText(TextView value) {
    const std::size_t middle = value.find(';');
    if (middle == TextView::npos) return false;
    const auto isColor = [](TextView text) {
        return text.size() == 6 && std::ranges::all_of(text, [](char c) { return HexDigit(c) >= 0; });
    };
    return isColor(TrimBlanks(value.substr(0, middle))) && isColor(TrimBlanks(value.substr(middle + 1)));
}

}  // namespace

Text FaultOf(const DescribedKey& key, TextView typed, const CheckGround& ground) {
    const TextView value = TrimBlanksAndTabs(typed);
    const Captions& captions = ground.captions;
    switch (key.control) {
        case ControlKind::Number:
            return FaultOfNumber(key, value, captions);
        case ControlKind::Switch:
            return IsWholeNumber(value) ? Text() : captions(kCaptionNoNumber);
        case ControlKind::Color:
            return value.empty() || IsWholeNumber(value) ? Text() : captions(kCaptionNoNumber);
        case ControlKind::Choice:
            return IsChoice(key, value) ? Text() : captions(kCaptionNoChoice);
        case ControlKind::Priorities:
            return IsPriorities(value) ? Text() : captions(kCaptionNoRange);
        case ControlKind::ColorPair:
            return value.empty() || IsPairText(value) ? Text() : captions(kCaptionNoColor);
        case ControlKind::Sound:
            return IsMissingFile(value, ground) ? captions(kCaptionNoFile, {value}) : Text();
        default:
            return {};
    }
}

CellColors ColorsOfPair(TextView text) {
    return IsPairText(text) ? ParseColorPair(text) : CellColors{};
}

Text PairText(const CellColors& colors) {
    if (!colors.background || !colors.text) return {};
    return HexText(*colors.background) + ";" + HexText(*colors.text);
}

Text ColorNumber(Rgb color) {
    return std::to_string(color.red + 256 * color.green + 65536 * color.blue);
}

double Contrast(Rgb first, Rgb second) {
    const double a = Luminance(first) + 0.05;
    const double b = Luminance(second) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

Text ContrastText(double contrast) {
    // Cut, not rounded: 4.49 does not pass for 4.5.
    const int tenths = static_cast<int>(contrast * 10);
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

}  // namespace nordkeep
