#pragma once

#include "runtime/Findings.h"
#include "runtime/IniLines.h"
#include "runtime/SettingCatalogue.h"

#include <functional>
#include <optional>

namespace nordkeep {

/// What can be said of a file of any kind from its bytes alone: empty or damaged. False, with a finding, when
/// there is no more to say.
bool CheckContent(TextView content, FileFindings& findings);

/// What can be said of any settings file: lines that say nothing, sections and keys that stand there twice,
/// values that are cut.
void CheckIniForm(const IniLines& lines, FileFindings& findings);

/// Which keys a settings file may have.
struct KeyRules {
    const SettingCatalogue& known;
    bool isOfPort = false;
    /// Sections beside the known ones, whose keys are somebody else's to judge.
    std::vector<TextView> otherSections{};
};
/// Unknown sections and keys, with the known one that is meant, and values that are not what their key is.
void CheckKeys(const IniLines& lines, const KeyRules& rules, FileFindings& findings);

/// A whole number and nothing else but blanks around it; none for anything else.
std::optional<std::int64_t> WholeNumber(TextView text);

/// The file of a path below the data folder; used for what the settings name.
using FileIsThere = std::function<bool(TextView path)>;

// Sentences that several checks use.
inline constexpr int kTextNotUnderstood = 3819;  // key, value, example of what is expected
inline constexpr int kTextNeeded = 3820;         // key
inline constexpr int kTextUnknownKey = 3790;     // key, section
inline constexpr int kTextFileMissing = 3817;    // key, file

}  // namespace nordkeep
