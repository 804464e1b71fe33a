#include "console/lists/AlarmColors.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr TextView kDefaultPair = "FFFFFF;000000";

std::optional<Rgb> ParseHexColor(TextView text) {
    if (text.size() != 6) return std::nullopt;
    std::array<std::uint8_t, 3> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const int high = HexDigit(text[2 * i]);
        const int low = HexDigit(text[2 * i + 1]);
        if (high < 0 || low < 0) return std::nullopt;
        parts[i] = static_cast<std::uint8_t>(high * 16 + low);
    }
    return Rgb{parts[0], parts[1], parts[2]};
}

}  // namespace

CellColors ParseColorPair(TextView text) {
    if (TrimBlanks(text).empty()) return {};
    const Text first = GetField(text, 0, ";");
    const Text second = GetField(text, 1, ";");
    const auto background = ParseHexColor(TrimBlanks(first));
    const auto foreground = ParseHexColor(TrimBlanks(second));
    return background && foreground ? CellColors{background, foreground} : ParseColorPair(kDefaultPair);
}

AlarmColorSettings LoadAlarmColors(const Settings& files, bool isSwitchedOff) {
    AlarmColorSettings settings;
    const int behaviour = LeadingInt32(files.ReadIni("General", "AlarmColorBehaviour", "0"));
    if (!isSwitchedOff && behaviour >= 0 && behaviour <= 3) {
        settings.behaviour = static_cast<AlarmColorBehaviour>(behaviour);
    }
    // A missing key leaves the colours of the theme, so that a dark one stays dark.
    for (std::size_t number = 0; number < settings.pairs.size(); ++number) {
        settings.pairs[number] =
            ParseColorPair(files.ReadIni("General", "ColorState_" + std::to_string(number), ""));
    }
    return settings;
}

CellColors ColorsOf(const AlarmColorSettings& settings, const AlarmCellKind& cell) {
    const bool isKnown = cell.status >= 0 && cell.status <= 5;
    std::size_t pair = isKnown ? static_cast<std::size_t>(cell.status) : 0;
    switch (settings.behaviour) {
        case AlarmColorBehaviour::None:
            return {};
        case AlarmColorBehaviour::CellsByStatus:
            if (!cell.isIconOrPriority) return {};
            break;
        case AlarmColorBehaviour::RowByPriority:
            if (IsNumeric(cell.priority) && LeadingNumber(cell.priority) <= 9) {
                pair = static_cast<std::size_t>(LeadingNumber(cell.priority));
            }
            break;
        case AlarmColorBehaviour::RowByStatus:
            break;
    }
    return settings.pairs[pair];
}

std::optional<Rgb> ParseColorNumber(TextView text) {
    if (TrimBlanksAndTabs(text).empty()) return std::nullopt;
    const std::int64_t number = LeadingNumber(text);
    if (number < 0 || number > 0xFFFFFF) return std::nullopt;
    const auto part = [number](int shift) { return static_cast<std::uint8_t>((number >> shift) & 0xFF); };
    return Rgb{part(0), part(8), part(16)};
}

}  // namespace nordkeep
