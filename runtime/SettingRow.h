#pragma once

#include "runtime/Fields.h"

#include <algorithm>
#include <climits>
#include <span>
#include <string>
#include <variant>

namespace nordkeep {

/// Whose setting it is: the workstation's own, the whole centre's (on a client the server's), or a port's.
enum class SettingScope { Workstation, Centre, Port };

/// One key of a settings file and the field of a subsystem's settings struct that it fills. The key's default
/// is what the field holds in a fresh struct, so a struct that nobody has loaded has the values of a centre
/// without the key. A number outside low to high is set to the nearer end.
template <class Struct>
struct SettingRow {
    using Field = std::variant<Text Struct::*, int Struct::*, bool Struct::*>;

    const char* section;
    const char* key;
    SettingScope scope;
    Field field;
    int low = INT_MIN;
    int high = INT_MAX;
};

/// What a settings file says when it says the value of this field.
template <class Struct>
[[gnu::noinline]] Text SettingText(const Struct& settings, const SettingRow<Struct>& row) {
    if (const auto* text = std::get_if<Text Struct::*>(&row.field)) return settings.**text;
    if (const auto* flag = std::get_if<bool Struct::*>(&row.field)) return settings.**flag ? "1" : "0";
    return std::to_string(settings.*std::get<int Struct::*>(row.field));
}

template <class Struct>
Text DefaultText(const SettingRow<Struct>& row, const Struct& fresh = Struct{}) {
    return SettingText(fresh, row);
}

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

}  // namespace nordkeep
