#pragma once

#include "runtime/SettingCatalogue.h"
#include "runtime/SettingTable.h"

#include <vector>

namespace nordkeep {

/// One setting as it is in force.
struct SettingInForce {
    Text section{};
    Text key{};
    Text value{};
    SettingScope scope = SettingScope::Workstation;
    bool isChanged = false;  // not the default
};

/// What the settings of this copy are, for reading. Passwords are not shown.
class SettingsList {
 public:
    SettingsList(const Settings& files, Text path) : files_(files), path_(std::move(path)) {}

    /// The keys of a subsystem; those of ports are left out, since every port has its own.
    template <class Struct>
    void Add(std::span<const SettingRow<Struct>> rows) {
        for (const SettingRow<Struct>& row : rows) {
            if (row.scope != SettingScope::Port) AddRow(row.section, row.key, DefaultText(row), row.scope);
        }
    }
    void Add(const KnownSetting& known) { AddRow(known.section, known.key, known.byDefault, known.scope); }
    /// The settings file of this copy.
    const Text& Path() const { return path_; }
    /// By section and key, each once.
    const std::vector<SettingInForce>& Rows() const { return rows_; }

 private:
    void AddRow(TextView section, TextView key, TextView byDefault, SettingScope scope);

    const Settings& files_;
    Text path_;
    std::vector<SettingInForce> rows_{};
};

}  // namespace nordkeep
