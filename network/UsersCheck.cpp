#include "network/UsersCheck.h"

#include "network/Users.h"
#include "platform/Passwords.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextUnknownSection = 3793;
constexpr int kTextField = 3837;
constexpr int kTextTooManyFields = 3841;
constexpr int kTextNoPassword = 3842;
constexpr int kTextValueCut = 3845;
constexpr int kTextNoEditor = 3847;
constexpr int kTextPlainPassword = 3858;

constexpr std::size_t kFields = 4;
constexpr std::size_t kInitials = 3;

/// The level of a user who can log in; 0 for any other.
std::int64_t CheckUser(const IniLines::Entry& entry, FileFindings& findings) {
    const int line = entry.line;
    // What follows from these two is said with them.
    const std::vector<Text> fields = Split(entry.value, ',');
    if (entry.value.size() > kLongestUser) {
        findings.Error(line, kTextValueCut, {std::to_string(kLongestUser)});
        return 0;
    }
    if (fields.size() > kFields) {
        findings.Error(line, kTextTooManyFields, {std::to_string(kFields)});
        return 0;
    }
    const auto field = [&](std::size_t number) {
        return number <= fields.size() ? TrimBlanksAndTabs(fields[number - 1]) : TextView();
    };
    findings.AtField(2);
    if (field(2).empty() || field(2).size() > kInitials)
        findings.Warning(line, kTextField, {"2", field(2), "ABC"});
    findings.AtField(3);
    if (field(3).empty()) {
        findings.Error(line, kTextNoPassword, {entry.key});
    } else if (!IsPasswordHash(field(3))) {
        findings.Warning(line, kTextPlainPassword, {entry.key});
    }
    findings.AtField(4);
    const auto level = WholeNumber(field(4));
    if (!level || *level < 0) findings.Error(line, kTextField, {"4", field(4), "1"});
    findings.AtField(0);
    return level && !field(3).empty() ? *level : 0;
}

}  // namespace

void CheckUsers(TextView content, FileFindings& findings) {
    if (!CheckContent(content, findings)) return;
    const IniLines lines(content);
    CheckIniForm(lines, findings);
    for (const IniLines::Section& section : lines.Sections()) {
        if (section.sameNameOn != 0 || EqualsNoCase(section.name, "Users")) continue;
        findings.UnknownWord(section.line, kTextUnknownSection, {section.name},
                             NearestWord(section.name, {"Users"}));
    }
    bool isAnyEditor = false;
    for (const IniLines::Entry* entry : lines.EntriesOf("Users"))
        isAnyEditor = CheckUser(*entry, findings) >= 2 || isAnyEditor;
    if (!isAnyEditor && lines.FindSection("Users"))
        findings.Warning(lines.LineOf("Users", ""), kTextNoEditor);
}

}  // namespace nordkeep
