#include "translation/SetCheck.h"

#include "runtime/Fields.h"
#include "translation/SetRows.h"

#include <algorithm>
#include <set>

namespace nordkeep {
namespace {

constexpr int kTextUnknownSection = 3793;
constexpr int kTextNoSeparator = 3821;
constexpr int kTextCodeAgain = 3823;
constexpr int kTextNoPriority = 3838;
constexpr int kTextNoResetType = 3839;
constexpr int kTextNoClass = 3840;
constexpr int kTextTooManyFields = 3841;
constexpr int kTextNoZoneSection = 5196;
constexpr int kTextNoZoneText = 5197;

constexpr std::size_t kTypeFields = 4;
constexpr const char* kDataSections[] = {"Event", "Environmental", "Modifiers"};

struct TypeRow {
    int line = 0;
    TextView row{};
};

std::vector<TypeRow> TypeRows(TextView content) {
    std::vector<TypeRow> rows;
    int line = 0;
    for (const TextView text : Lines(content)) {
        ++line;
        // One line is one row or none.
        for (const TextView row : SetRows(text)) rows.push_back({line, row});
    }
    return rows;
}

void CheckPriority(TextView priority, int line, FileFindings& findings) {
    if (WholeNumber(priority)) return;
    findings.Error(line, kTextNoPriority, {priority, std::to_string(LeadingInt16(priority))});
}

class TypeCheck {
 public:
    TypeCheck(TextView content, FileFindings& findings) : rows_(TypeRows(content)), findings_(findings) {
        for (const TypeRow& row : rows_) lines_.try_emplace(TrimBlanks(RowFields<1>(row.row)[0]), row.line);
    }

    void Run() {
        for (const TypeRow& row : rows_) CheckRow(row);
    }

 private:
    void CheckRow(const TypeRow& row) {
        if (row.row.find(';') == TextView::npos)
            return findings_.Error(row.line, kTextNoSeparator, {row.row});
        const auto fields = RowFields<kTypeFields + 1>(row.row);
        const TextView code = TrimBlanks(fields[0]);
        const TextView reset = TrimBlanks(fields[3]);
        const int first = lines_.at(code);
        findings_.AtField(1);
        if (first != row.line) findings_.Error(row.line, kTextCodeAgain, {code, std::to_string(first)});
        findings_.AtField(2);
        CheckPriority(TrimBlanks(fields[1]), row.line, findings_);
        findings_.AtField(4);
        if (!reset.empty() && reset != "*" && !lines_.contains(reset))
            findings_.Warning(row.line, kTextNoResetType, {reset});
        findings_.AtField(0);
        if (!TrimBlanks(fields[4]).empty())
            findings_.Warning(row.line, kTextTooManyFields, {std::to_string(kTypeFields)});
    }

    std::vector<TypeRow> rows_;
    FileFindings& findings_;
    std::unordered_map<TextView, int> lines_{};
};

/// Contact ID codes are three digits, SIA codes two letters.
bool IsContactId(TextView code) {
    return IsNumeric(code) && code.size() == 3;
}

void CheckDataCode(const IniLines& lines, const IniLines::Entry& entry, FileFindings& findings) {
    const auto isKnown = [&](TextView code) {
        return lines.Find("Event", code) || lines.Find("Environmental", code);
    };
    const Text second(TrimBlanks(GetField(entry.value, 1, ";")));
    const Text priority(TrimBlanks(GetField(entry.value, 2, ";")));
    findings.AtField(3);
    if (!priority.empty()) CheckPriority(priority, entry.line, findings);
    findings.AtField(2);
    if (IsContactId(entry.key)) {
        if (!EqualsNoCase(second, "Z") && !EqualsNoCase(second, "U"))
            findings.Warning(entry.line, kTextNoClass, {entry.key});
    } else if (!second.empty() && second != "*" && !isKnown(second)) {
        findings.Warning(entry.line, kTextNoResetType, {second});
    }
    findings.AtField(0);
}

}  // namespace

void CheckTypeCodes(TextView content, FileFindings& findings) {
    if (CheckContent(content, findings)) TypeCheck(content, findings).Run();
}

void CheckDataCodes(TextView content, FileFindings& findings) {
    if (!CheckContent(content, findings)) return;
    const IniLines lines(content);
    CheckIniForm(lines, findings);
    const std::vector<TextView> sections(std::begin(kDataSections), std::end(kDataSections));
    for (const IniLines::Section& section : lines.Sections()) {
        const auto isThis = [&section](TextView known) { return EqualsNoCase(known, section.name); };
        if (section.sameNameOn != 0 || std::ranges::any_of(sections, isThis)) continue;
        findings.UnknownWord(section.line, kTextUnknownSection, {section.name},
                             NearestWord(section.name, sections));
    }
    for (const TextView section : {"Event", "Environmental"}) {
        for (const IniLines::Entry* entry : lines.EntriesOf(section)) CheckDataCode(lines, *entry, findings);
    }
}

void CheckZones(TextView content, FileFindings& findings) {
    if (!CheckContent(content, findings)) return;
    const IniLines lines(content);
    CheckIniForm(lines, findings);
    for (const IniLines::Section& section : lines.Sections()) {
        // A code of an event has two letters, or three digits with a letter in front.
        const std::size_t length = section.name.size();
        const bool isCode = (length == 2 || length == 3 || length == 4) &&
                            section.name.find_first_of(" \t") == TextView::npos;
        if (!isCode && !EqualsNoCase(section.name, "General"))
            findings.Warning(section.line, kTextNoZoneSection, {section.name});
    }
    for (const IniLines::Entry& entry : lines.Entries()) {
        if (TrimBlanksAndTabs(entry.value).empty() && lines.Counts(entry))
            findings.Warning(entry.line, kTextNoZoneText, {entry.key});
    }
}

}  // namespace nordkeep
