#include "console/window/SettingsList.h"

namespace nordkeep {
namespace {

int Compare(const SettingInForce& a, const SettingInForce& b) {
    const int bySection = CompareNoCase(a.section, b.section);
    return bySection != 0 ? bySection : CompareNoCase(a.key, b.key);
}

bool IsSecret(TextView key) {
    return FindNoCase(key, "Password") != TextView::npos;
}

}  // namespace

void SettingsList::AddRow(TextView section, TextView key, TextView byDefault, SettingScope scope) {
    SettingInForce row{.section = Text(section), .key = Text(key), .scope = scope};
    row.value = scope == SettingScope::Centre ? files_.ReadMainIni(section, key, byDefault)
                                              : files_.ReadIni(section, key, byDefault);
    row.isChanged = row.value != byDefault;
    if (IsSecret(key) && !row.value.empty()) row.value = "********";
    const auto at =
        std::ranges::lower_bound(rows_, 0, {}, [&](const auto& known) { return Compare(known, row); });
    if (at == rows_.end() || Compare(*at, row) != 0) rows_.insert(at, std::move(row));
}

}  // namespace nordkeep
