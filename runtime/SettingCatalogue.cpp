#include "runtime/SettingCatalogue.h"

#include <optional>
#include <tuple>

namespace nordkeep {
namespace {

Text NameOf(bool isOfPort, TextView section, TextView key) {
    return UpperCase(section).append("\n").append(UpperCase(key)).append(isOfPort ? "\nP" : "");
}

bool IsSame(const KnownSetting& a, const KnownSetting& b) {
    const auto told = [](const KnownSetting& s) {
        return std::tie(s.scope, s.kind, s.low, s.high, s.byDefault, s.isFamily);
    };
    return told(a) == told(b);
}

/// The number behind a key of a family, without leading zeros; none for any other text.
std::optional<int> MemberNumber(TextView digits) {
    constexpr std::size_t kMostDigits = 5;
    if (!IsNumeric(digits) || digits.size() > kMostDigits) return std::nullopt;
    if (digits.size() > 1 && digits.front() == '0') return std::nullopt;
    return LeadingInt32(digits);
}

}  // namespace

void SettingCatalogue::Add(KnownSetting setting) {
    const bool isOfPort = setting.scope == SettingScope::Port;
    const auto [place, isNew] =
        byName_.try_emplace(NameOf(isOfPort, setting.section, setting.key), all_.size());
    if (isNew) {
        all_.push_back(std::move(setting));
    } else if (!IsSame(all_[place->second], setting)) {
        contradictions_.push_back(setting.section + " " + setting.key);
    }
}

const KnownSetting* SettingCatalogue::FindExactly(bool isOfPort, TextView section, TextView key) const {
    const auto known = byName_.find(NameOf(isOfPort, section, key));
    return known == byName_.end() ? nullptr : &all_[known->second];
}

const KnownSetting* SettingCatalogue::Find(bool isOfPort, TextView section, TextView key) const {
    const KnownSetting* exact = FindExactly(isOfPort, section, key);
    if (exact && !exact->isFamily) return exact;
    const std::size_t end = key.find_last_not_of("0123456789");
    if (end == TextView::npos) return nullptr;
    const KnownSetting* family = FindExactly(isOfPort, section, key.substr(0, end + 1));
    const std::optional<int> number = MemberNumber(key.substr(end + 1));
    if (!family || !family->isFamily || !number) return nullptr;
    return *number >= family->low && *number <= family->high ? family : nullptr;
}

}  // namespace nordkeep
