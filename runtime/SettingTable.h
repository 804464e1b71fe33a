#pragma once

#include "runtime/Fields.h"
#include "runtime/Settings.h"

#include <algorithm>
#include <climits>
#include <span>
#include <variant>

namespace nordkeep {

/// Whose setting it is: the workstation's own, the whole centre's (on a client the server's), or a port's.
enum class SettingScope { Workstation, Centre, Port };

/// One key of a settings file and the field of a subsystem's settings struct that it fills.
/// A number outside low to high is set to the nearer end.
template <class Struct>
struct SettingRow {
    const char* section;
    const char* key;
    const char* byDefault;
    SettingScope scope;
    std::variant<Text Struct::*, int Struct::*, bool Struct::*> field;
    int low = INT_MIN;
    int high = INT_MAX;
};

/// Sets one field from the text of its key. Not inlined: the compiler would warn of the kinds of field that a
/// struct does not have.
template <class Struct>
[[gnu::noinline]] void StoreSetting(Struct& settings, const SettingRow<Struct>& row, const Text& value) {
    if (const auto* text = std::get_if<Text Struct::*>(&row.field)) settings.** text = value;
    if (const auto* flag = std::get_if<bool Struct::*>(&row.field)) settings.** flag = IsTrue(value);
    if (const auto* number = std::get_if<int Struct::*>(&row.field)) {
        settings.** number = std::clamp(LeadingInt32(value), row.low, row.high);
    }
}

/// Fills a subsystem's settings from the files; `portName` serves the rows of scope Port.
template <class Struct>
Struct LoadSettings(const Settings& files, std::span<const SettingRow<Struct>> rows, TextView portName = {}) {
    Struct settings{};
    for (const SettingRow<Struct>& row : rows) {
        const Text value =
            row.scope == SettingScope::Port ? files.ReadPortIni(row.section, row.key, row.byDefault, portName)
            : row.scope == SettingScope::Centre ? files.ReadMainIni(row.section, row.key, row.byDefault)
                                                : files.ReadIni(row.section, row.key, row.byDefault);
        StoreSetting(settings, row, value);
    }
    return settings;
}

}  // namespace nordkeep
