#include "console/editors/FieldMapFormat.h"

#include "console/editors/FieldList.h"
#include "pipeline/XmlFieldMap.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaption = 4870;
constexpr int kCaptionEmpty = 4871;
constexpr int kCaptionLine = 5852;
constexpr int kFirstCaption = 4872;
constexpr int kFirstHelp = 4875;

enum Value : std::size_t { kSection, kKey, kElements };

std::vector<Text> Sections() {
    std::vector<Text> sections;
    for (const FieldMapRow& row : kFieldMaps) {
        for (const char* moment : {kBeforeTranslation, kAfterTranslation})
            sections.push_back(Text(row.section) + moment);
    }
    return sections;
}

std::vector<DescribedChoice> ChoicesFrom(const std::vector<Text>& values) {
    std::vector<DescribedChoice> choices;
    for (const Text& value : values) choices.push_back({.value = value, .caption = {}});
    return choices;
}

}  // namespace

int FieldMapFormat::Caption() const {
    return kCaption;
}

int FieldMapFormat::EmptyText() const {
    return kCaptionEmpty;
}

int FieldMapFormat::OwnerCaption() const {
    return kCaptionLine;
}

Text FieldMapFormat::FileOf(const Text& name) const {
    return "Settings\\" + name + ".ini";
}

bool FieldMapFormat::TakesSection(TextView section) const {
    return std::ranges::any_of(Sections(),
                               [section](const Text& known) { return EqualsNoCase(known, section); });
}

std::vector<DescribedGroup> FieldMapFormat::Groups() const {
    const auto field = [](Value value, const char* name, ControlKind control) {
        const int number = static_cast<int>(value);
        return ListedField{name, control, kFirstCaption + number, kFirstHelp + number};
    };
    ListedField section = field(kSection, "Section", ControlKind::Choice);
    section.choices = ChoicesFrom(Sections());
    ListedField key = field(kKey, "Field", ControlKind::Choice);
    key.choices = ChoicesFrom(keys_);
    return {FieldGroup(0, {section, key, field(kElements, "Elements", ControlKind::Words)})};
}

std::vector<RowFormat::Column> FieldMapFormat::Columns() const {
    return {{kSection, 260}, {kKey, 200}, {kElements, 300}};
}

RowFormat::Values FieldMapFormat::ValuesOf(const FileItem& row) const {
    const IniPair pair = PairOf(row.text);
    Text section = row.section;
    for (const Text& known : Sections()) {
        if (EqualsNoCase(known, section)) section = known;
    }
    return {std::move(section), pair.key, pair.value};
}

FileItem FieldMapFormat::ItemOf(const Values& values, const FileItem& before) const {
    FileItem item = before;
    if (!EqualsNoCase(item.section, values[kSection])) item.section = values[kSection];
    item.text = LineOfPair({values[kKey], values[kElements]});
    return item;
}

RowFormat::Values FieldMapFormat::NewValues() const {
    return {Sections().front(), keys_.empty() ? Text() : keys_.front(), ""};
}

}  // namespace nordkeep
