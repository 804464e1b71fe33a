#include "console/editors/EventCodeFormat.h"

#include "console/editors/FieldList.h"
#include "console/editors/ObjectFormat.h"
#include "runtime/Fields.h"
#include "translation/SetCheck.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kCaption = 4830;
constexpr int kCaptionEmpty = 4831;
constexpr int kFirstCaption = 4832;
constexpr int kFirstHelp = 4837;
constexpr int kFirstSection = 4842;
constexpr std::array<const char*, 3> kSections = {"Event", "Environmental", "Modifiers"};

enum Value : std::size_t { kSection, kCode, kText, kResetOrClass, kPriority, kValues };

bool IsModifiers(TextView section) {
    return EqualsNoCase(section, kSections.back());
}

}  // namespace

int EventCodeFormat::Caption() const {
    return kCaption;
}

int EventCodeFormat::EmptyText() const {
    return kCaptionEmpty;
}

Text EventCodeFormat::FileOf(const Text& name) const {
    return "Settings\\" + name + ".DataCode";
}

bool EventCodeFormat::TakesSection(TextView section) const {
    return std::ranges::any_of(kSections,
                               [section](const char* known) { return EqualsNoCase(known, section); });
}

std::vector<DescribedGroup> EventCodeFormat::Groups() const {
    const auto field = [](Value value, const char* name, ControlKind control) {
        const int number = static_cast<int>(value);
        return ListedField{name, control, kFirstCaption + number, kFirstHelp + number};
    };
    ListedField section = field(kSection, "Section", ControlKind::Choice);
    for (std::size_t number = 0; number < kSections.size(); ++number) {
        const int caption = kFirstSection + static_cast<int>(number);
        section.choices.push_back({.value = kSections[number], .caption = {.number = caption, .own = {}}});
    }
    return {FieldGroup(
        0, {section, field(kCode, "Code", ControlKind::Words), field(kText, "Text", ControlKind::Words),
            field(kResetOrClass, "ResetOrClass", ControlKind::Words),
            field(kPriority, "Priority", ControlKind::Words)})};
}

std::vector<RowFormat::Column> EventCodeFormat::Columns() const {
    return {{kCode, 90}, {kText, 290}, {kResetOrClass, 170}, {kPriority, 80}, {kSection, 160}};
}

RowFormat::Values EventCodeFormat::ValuesOf(const FileItem& row) const {
    const IniPair pair = PairOf(row.text);
    Values values(kValues);
    values[kSection] = row.section;
    for (const char* section : kSections) {
        if (EqualsNoCase(section, row.section)) values[kSection] = section;
    }
    values[kCode] = pair.key;
    if (IsModifiers(row.section)) {
        values[kText] = pair.value;
        return values;
    }
    values[kText] = GetField(pair.value, 0, ";");
    values[kResetOrClass] = TrimBlanks(GetField(pair.value, 1, ";"));
    values[kPriority] = TrimBlanks(GetField(pair.value, 2, ";"));
    return values;
}

FileItem EventCodeFormat::ItemOf(const Values& values, const FileItem& before) const {
    FileItem item = before;
    if (!EqualsNoCase(item.section, values[kSection])) item.section = values[kSection];
    Text value = values[kText];
    if (!IsModifiers(item.section)) {
        value += ";" + values[kResetOrClass] + ";" + values[kPriority];
        value.erase(value.find_last_not_of(';') + 1);
    }
    item.text = LineOfPair({values[kCode], value});
    return item;
}

Text EventCodeFormat::FitValue(const DescribedKey& key, Text value) const {
    return key.key == "Code" ? FitKey(std::move(value)) : WithoutSeparators(std::move(value));
}

RowFormat::Values EventCodeFormat::NewValues() const {
    return {kSections.front(), "", "", "", ""};
}

std::optional<std::size_t> EventCodeFormat::FieldOf(int number) const {
    if (number < 1 || number > 3) return std::nullopt;
    return static_cast<std::size_t>(number) + 1;
}

void EventCodeFormat::Check(TextView content, FileFindings& findings) const {
    CheckDataCodes(content, findings);
}

}  // namespace nordkeep
