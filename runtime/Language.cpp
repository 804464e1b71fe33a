#include "runtime/Language.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <optional>

namespace nordkeep {

bool Language::Load(const FileTree& programFolder, TextView number) {
    texts_.clear();
    if (number.empty() || !IsSafeComponent(number)) return false;
    const auto content = ReadFile(programFolder.Resolve("NK_Lang." + Text(number)));
    if (!content) return false;
    LoadFrom(*content);
    return true;
}

void Language::LoadFrom(TextView content) {
    texts_.clear();
    for (const TextView line : Lines(content)) {
        const std::size_t equals = line.find('=');
        // A remark with "=" in it must not become text 0.
        const bool hasDigit = line.substr(0, equals).find_first_of("0123456789") != TextView::npos;
        if (equals == TextView::npos || !hasDigit) continue;
        texts_.try_emplace(LeadingInt32(line.substr(0, equals)), GetField(line, 1, "="));
    }
}

Text Language::GetLanguageText(int number) const {
    const auto found = texts_.find(number);
    if (found != texts_.end()) return found->second;
    return "Invalid Text (" + std::to_string(number) + ")";
}

namespace {

/// Words for one and for several, "{1:row|rows}", at the front of a text.
struct NumberForm {
    TextView chosen{};
    std::size_t length = 0;
};

std::optional<NumberForm> FormAt(TextView text, std::span<const TextView> values) {
    if (text.size() < 3 || text[0] != '{' || text[1] < '1' || text[2] != ':') return std::nullopt;
    const auto place = static_cast<std::size_t>(text[1] - '1');
    const std::size_t bar = text.find('|');
    const std::size_t end = text.find('}');
    if (place >= values.size() || bar == TextView::npos || end == TextView::npos || bar > end)
        return std::nullopt;
    const bool isOne = values[place] == "1";
    return NumberForm{isOne ? text.substr(3, bar - 3) : text.substr(bar + 1, end - bar - 1), end + 1};
}

}  // namespace

Text FillPlaces(TextView pattern, std::span<const TextView> values) {
    Text filled;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (const auto form = FormAt(pattern.substr(at), values)) {
            filled += FillPlaces(form->chosen, values);
            at += form->length - 1;
            continue;
        }
        const bool isPlace =
            pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] >= '1' &&
            pattern[at + 1] < static_cast<char>('1' + std::min<std::size_t>(values.size(), 9));
        if (isPlace) {
            filled += values[static_cast<std::size_t>(pattern[++at] - '1')];
        } else {
            filled += pattern[at];
        }
    }
    return filled;
}

std::vector<LanguageChoice> ListLanguages(const FileTree& programFolder) {
    std::vector<LanguageChoice> choices;
    for (const Text& name : ListFiles(programFolder.Root())) {
        const TextView extension = TextView(name).substr(name.rfind('.') + 1);
        if (!MatchesMask(name, "NK_Lang.???") || !IsNumeric(extension)) continue;
        Language language;
        language.LoadFrom(ReadFile(programFolder.Resolve(name)).value_or(Text()));
        choices.push_back({LeadingInt32(extension), language.GetLanguageText(0)});
    }
    std::ranges::sort(choices, {}, &LanguageChoice::number);
    return choices;
}

Text LanguageNumber(int number) {
    return Digits(number, 3);
}

}  // namespace nordkeep
