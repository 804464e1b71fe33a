#pragma once

#include "platform/Dialogs.h"
#include "platform/FileTree.h"

#include <span>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// The texts of the operator's language, by number.
class Language {
 public:
    /// Reads NK_Lang.<number> of the program folder; the old texts go in any case. False when the number is
    /// empty or the file cannot be read. A text ends at a second "=", and of equal numbers the first counts.
    bool Load(const FileTree& programFolder, TextView number);
    /// Takes the texts from the content of a language file.
    void LoadFrom(TextView content);

    /// "Invalid Text (<number>)" for a number that the file does not have.
    Text GetLanguageText(int number) const;
    bool Has(int number) const { return texts_.contains(number); }

 private:
    std::unordered_map<int, Text> texts_{};
};

/// Replaces %1 to %9 by the values in one pass; a place without a value stays as it is. "{1:row|rows}"
/// becomes the first word where the value of %1 is 1, else the second.
Text FillPlaces(TextView pattern, std::span<const TextView> values);

/// The language files of the program folder (NK_Lang.NNN with a numeric extension), by number.
std::vector<LanguageChoice> ListLanguages(const FileTree& programFolder);
/// The number as the settings file holds it: three digits.
Text LanguageNumber(int number);

}  // namespace nordkeep
