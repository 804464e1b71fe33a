#pragma once

#include "runtime/SettingRow.h"

#include <initializer_list>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// What the value of a key is.
enum class SettingKind { Words, Number, Switch };

/// One key that a settings file may hold, as plain data.
struct KnownSetting {
    Text section{};
    Text key{};  // of a family without its number: "COM" for COM1, COM2 and so on
    SettingScope scope = SettingScope::Workstation;
    SettingKind kind = SettingKind::Words;
    int low = INT_MIN;  // of a number; what lies outside is set to the nearer end
    int high = INT_MAX;
    Text byDefault{};       // as a settings file says it
    bool isFamily = false;  // the key is followed by a number from low to high; the value is none

    /// The key as a person is told it: "COM1" for the family.
    Text Example() const { return isFamily ? key + std::to_string(low) : key; }
};

/// Every key that is known: those of the settings tables and those that are read in other ways. Sections and
/// keys are found without regard to case.
class SettingCatalogue {
 public:
    /// The keys of a table; one that is known already stays as it is, since several subsystems may read it.
    template <class Struct>
    void Add(std::span<const SettingRow<Struct>> rows) {
        for (const SettingRow<Struct>& row : rows) {
            KnownSetting known{.section = row.section, .key = row.key, .scope = row.scope};
            known.kind = std::holds_alternative<int Struct::*>(row.field)    ? SettingKind::Number
                         : std::holds_alternative<bool Struct::*>(row.field) ? SettingKind::Switch
                                                                             : SettingKind::Words;
            known.low = row.low;
            known.high = row.high;
            known.byDefault = DefaultText(row);
            Add(std::move(known));
        }
    }
    void Add(KnownSetting setting);

    /// In the order in which they were added, each once.
    const std::vector<KnownSetting>& All() const { return all_; }
    /// The key of a settings file: of a port's, or of the main one. None for an unknown one; a member of a
    /// family is found too.
    const KnownSetting* Find(bool isOfPort, TextView section, TextView key) const;
    /// Keys that two tables tell differently, for the test that there are none.
    const std::vector<Text>& Contradictions() const { return contradictions_; }

 private:
    const KnownSetting* FindExactly(bool isOfPort, TextView section, TextView key) const;

    std::vector<KnownSetting> all_{};
    std::unordered_map<Text, std::size_t> byName_{};
    std::vector<Text> contradictions_{};
};

}  // namespace nordkeep
