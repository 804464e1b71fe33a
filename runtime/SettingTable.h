#pragma once

#include "runtime/SettingRow.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// Fills a subsystem's settings from the files; `portName` serves the rows of scope Port.
template <class Struct>
Struct LoadSettings(const Settings& files, std::span<const SettingRow<Struct>> rows, TextView portName = {}) {
    const Struct fresh{};
    Struct settings{};
    for (const SettingRow<Struct>& row : rows) {
        const Text byDefault = DefaultText(row, fresh);
        const Text value =
            row.scope == SettingScope::Port     ? files.ReadPortIni(row.section, row.key, byDefault, portName)
            : row.scope == SettingScope::Centre ? files.ReadMainIni(row.section, row.key, byDefault)
                                                : files.ReadIni(row.section, row.key, byDefault);
        StoreSetting(settings, row, value);
    }
    return settings;
}

}  // namespace nordkeep
