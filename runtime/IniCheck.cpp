#include "runtime/IniCheck.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextOtherSection = 3792;
constexpr int kTextUnknownSection = 3793;
constexpr int kTextSaysNothing = 3795;
constexpr int kTextNoBracket = 3796;
constexpr int kTextNoSection = 3797;
constexpr int kTextSectionAgain = 3798;
constexpr int kTextKeyAgain = 3799;
constexpr int kTextValueCut = 3800;
constexpr int kTextNoNumber = 3801;
constexpr int kTextOutOfRange = 3802;
constexpr int kTextNoSwitch = 3803;
constexpr int kTextBehindBracket = 3804;
constexpr int kTextEmpty = 3805;
constexpr int kTextDamaged = 3806;

int LineOfNul(TextView content) {
    const auto before = Lines(content.substr(0, content.find('\0') + 1));
    return static_cast<int>(before.size());
}

/// Keys that a person has put out of use in the way of other systems.
bool LooksLikeComment(TextView key) {
    return key.starts_with('#') || key.starts_with("//");
}

std::vector<TextView> KnownSections(const KeyRules& rules) {
    std::vector<TextView> sections = rules.otherSections;
    for (const KnownSetting& known : rules.known.All()) {
        if ((known.scope == SettingScope::Port) == rules.isOfPort) sections.push_back(known.section);
    }
    return sections;
}

bool Holds(const std::vector<TextView>& words, TextView word) {
    return std::ranges::any_of(words, [word](TextView other) { return EqualsNoCase(other, word); });
}

class KeyCheck {
 public:
    KeyCheck(const IniLines& lines, const KeyRules& rules, FileFindings& findings)
        : lines_(lines), rules_(rules), findings_(findings), sections_(KnownSections(rules)) {}

    void Run() {
        for (const IniLines::Section& section : lines_.Sections()) CheckSection(section);
        for (const IniLines::Entry& entry : lines_.Entries()) {
            if (lines_.Counts(entry)) CheckEntry(entry, lines_.Sections()[entry.section].name);
        }
    }

 private:
    void CheckSection(const IniLines::Section& section) {
        if (section.sameNameOn != 0 || Holds(sections_, section.name)) return;
        findings_.UnknownWord(section.line, kTextUnknownSection, {section.name},
                              Nearest(section.name, sections_));
    }

    void CheckEntry(const IniLines::Entry& entry, TextView section) {
        if (Holds(rules_.otherSections, section) || !Holds(sections_, section)) return;
        const KnownSetting* known = rules_.known.Find(rules_.isOfPort, section, entry.key);
        if (known) return CheckValue(entry, *known);
        if (LooksLikeComment(entry.key)) return findings_.Warning(entry.line, kTextSaysNothing);
        if (const KnownSetting* elsewhere = FindElsewhere(entry.key)) {
            return findings_.Error(entry.line, kTextOtherSection, {entry.key, elsewhere->section});
        }
        findings_.UnknownWord(entry.line, kTextUnknownKey, {entry.key, section},
                              Nearest(entry.key, KeysOf(section)));
    }

    void CheckValue(const IniLines::Entry& entry, const KnownSetting& known) {
        if (known.kind == SettingKind::Words) return;
        if (known.kind == SettingKind::Switch) return CheckSwitch(entry);
        const std::optional<std::int64_t> number = WholeNumber(entry.value);
        if (!number) return CheckNoNumber(entry, known);
        if (known.isFamily || (*number >= known.low && *number <= known.high)) return;
        const std::int64_t used = std::clamp<std::int64_t>(*number, known.low, known.high);
        findings_.Warning(
            entry.line, kTextOutOfRange,
            {entry.key, std::to_string(known.low), std::to_string(known.high), std::to_string(used)});
    }

    // Half a number counts as what stands in front; nothing at all as 0.
    void CheckNoNumber(const IniLines::Entry& entry, const KnownSetting& known) {
        const bool isEmpty = TrimBlanksAndTabs(entry.value).empty();
        if (isEmpty && LeadingNumber(known.byDefault) == 0) return;
        const bool hasNumber = entry.value.find_first_of("0123456789") != TextView::npos;
        const int used = std::clamp(LeadingInt32(entry.value), known.isFamily ? 0 : known.low,
                                    known.isFamily ? INT_MAX : known.high);
        findings_.Add(entry.line, hasNumber || isEmpty ? Severity::Warning : Severity::Error, kTextNoNumber,
                      {entry.key, entry.value, std::to_string(used)});
    }

    void CheckSwitch(const IniLines::Entry& entry) {
        if (WholeNumber(entry.value) || TrimBlanksAndTabs(entry.value).empty()) return;
        const TextView read = IsTrue(entry.value) ? "1" : "0";
        findings_.Error(entry.line, kTextNoSwitch, {entry.key, entry.value, read});
    }

    const KnownSetting* FindElsewhere(TextView key) const {
        for (const TextView section : sections_) {
            if (const KnownSetting* known = rules_.known.Find(rules_.isOfPort, section, key)) return known;
        }
        return nullptr;
    }

    std::vector<TextView> KeysOf(TextView section) const {
        std::vector<TextView> keys;
        for (const KnownSetting& known : rules_.known.All()) {
            const bool isOfFile = (known.scope == SettingScope::Port) == rules_.isOfPort;
            if (isOfFile && EqualsNoCase(known.section, section)) keys.push_back(known.key);
        }
        return keys;
    }

    TextView Nearest(TextView word, const std::vector<TextView>& candidates) const {
        return findings_.All().IsFull() ? TextView() : NearestWord(word, candidates);
    }

    const IniLines& lines_;
    const KeyRules& rules_;
    FileFindings& findings_;
    std::vector<TextView> sections_;
};

}  // namespace

bool CheckContent(TextView content, FileFindings& findings) {
    if (content.empty()) {
        findings.Error(0, kTextEmpty);
    } else if (content.find('\0') != TextView::npos) {
        findings.Error(LineOfNul(content), kTextDamaged);
    } else {
        return true;
    }
    return false;
}

void CheckIniForm(const IniLines& lines, FileFindings& findings) {
    for (const IniLines::Stray& stray : lines.Strays()) {
        findings.Error(stray.line, stray.text.front() == '[' ? kTextNoBracket : kTextSaysNothing);
    }
    for (const IniLines::Section& section : lines.Sections()) {
        const Text before = std::to_string(section.sameNameOn);
        if (section.sameNameOn != 0) findings.Error(section.line, kTextSectionAgain, {section.name, before});
        if (section.behind.find('=') != TextView::npos && section.behind.front() != ';')
            findings.Error(section.line, kTextBehindBracket);
    }
    for (const IniLines::Entry& entry : lines.Entries()) {
        const Text before = std::to_string(entry.sameKeyOn);
        if (entry.section == IniLines::Entry::kNoSection) findings.Error(entry.line, kTextNoSection);
        if (entry.sameKeyOn != 0) findings.Error(entry.line, kTextKeyAgain, {entry.key, before});
        if (entry.isCut) findings.Error(entry.line, kTextValueCut);
    }
}

void CheckKeys(const IniLines& lines, const KeyRules& rules, FileFindings& findings) {
    KeyCheck(lines, rules, findings).Run();
}

std::optional<std::int64_t> WholeNumber(TextView text) {
    TextView digits = TrimBlanksAndTabs(text);
    if (digits.starts_with('-') || digits.starts_with('+')) digits.remove_prefix(1);
    if (!IsNumeric(digits)) return std::nullopt;
    return LeadingNumber(TrimBlanksAndTabs(text));
}

}  // namespace nordkeep
