#pragma once

#include "platform/Text.h"

#include <optional>
#include <unordered_map>
#include <vector>

namespace nordkeep {

/// The content of one settings file, indexed by section and key without regard to case.
///
/// A section line is "[name]" behind optional blanks, whatever follows. Only ";" as first non-blank makes a
/// comment. The key is what stands before the first "=", the value all behind it, blanks and tabs cut at both
/// ends, then one pair of equal quotes taken off. Of equal sections and of equal keys the first counts.
/// A value longer than 2047 characters is cut there.
class IniText {
 public:
    IniText() = default;
    explicit IniText(Text content);

    const Text& Content() const { return content_; }
    /// None when the section or the key is missing; an empty value is a value.
    std::optional<Text> Value(TextView section, TextView key) const;
    /// Keys of a section in file order, spelled as in the file.
    std::vector<Text> Keys(TextView section) const;
    /// The same file with one value changed or added; every other byte stays. A new key stands behind the
    /// last line of its section that is not blank, a new section at the end. New lines end in CR LF.
    Text WithValue(TextView section, TextView key, TextView value) const;

    /// Changes a value whose line keeps its length, here and now, and gives the place of the new line in the
    /// content. None, with nothing changed, when the key is missing or the length would change.
    std::optional<TextView> Overwrite(TextView section, TextView key, TextView value);

 private:
    struct Entry {
        Text key{};
        std::size_t lineStart = 0;
        std::size_t lineEnd = 0;  // in front of the line end
        Text value{};
    };
    struct Section {
        std::vector<Entry> entries{};
        std::unordered_map<Text, std::size_t> byKey{};  // upper case to the first entry
        std::size_t insertAt = 0;                       // behind the last line that is not blank
    };

    void ReadLine(TextView line, std::size_t lineStart, std::size_t behindLineEnd);
    const Section* Find(TextView section) const;

    Text content_{};
    std::unordered_map<Text, std::size_t> bySection_{};  // upper case to the first section of that name
    std::vector<Section> sections_{};
};

/// The look-up in a settings text that a client has from its server, with rules of its own: the section
/// header is directly followed by CR LF, there are no blanks before "=", nothing is unquoted, and a value
/// ends at a second "=".
Text ReadIniFromText(TextView text, TextView section, TextView key, TextView byDefault);
/// The keys of a section of such a text, each followed by NUL, and one more NUL; empty without the section.
Text ListIniKeysFromText(TextView text, TextView section);

}  // namespace nordkeep
