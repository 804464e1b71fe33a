#include "console/editors/TypeFormat.h"

#include "console/editors/ContentCheck.h"
#include "console/editors/ObjectFormat.h"
#include "translation/TypeCodeFile.h"

namespace nordkeep {
namespace {

constexpr int kCaption = 4770;
constexpr int kCaptionEmpty = 4771;
constexpr int kFirstCaption = 4772;  // of the values, in their order
constexpr int kFirstHelp = 4776;

}  // namespace

int TypeFormat::Caption() const {
    return kCaption;
}

int TypeFormat::EmptyText() const {
    return kCaptionEmpty;
}

Text TypeFormat::FileOf(const Text& name) const {
    return TypeCodeFileName(name);
}

std::vector<FileItem> TypeFormat::Items(TextView content) const {
    return ItemsOf(TypeCodeLines(content));
}

std::vector<DescribedGroup> TypeFormat::Groups() const {
    const auto field = [](TypeValue value, const char* name, ControlKind control) {
        const int number = static_cast<int>(value);
        return ListedField{name, control, kFirstCaption + number, kFirstHelp + number};
    };
    return {FieldGroup(0, {field(kTypeCode, "TypeCode", ControlKind::Words),
                           field(kTypePriority, "Priority", ControlKind::Number),
                           field(kTypeName, "Name", ControlKind::Words),
                           field(kTypeResetCode, "ResetTypeCode", ControlKind::Pick)})};
}

std::vector<RowFormat::Column> TypeFormat::Columns() const {
    return {{kTypeCode, 110}, {kTypePriority, 90}, {kTypeName, 320}, {kTypeResetCode, 160}};
}

RowFormat::Values TypeFormat::ValuesOf(const FileItem& row) const {
    return ValuesOfType(row.text);
}

FileItem TypeFormat::ItemOf(const Values& values, const FileItem& before) const {
    FileItem item = before;
    item.text = TypeRow(values, before.text);
    return item;
}

Text TypeFormat::FitValue(const DescribedKey&, Text value) const {
    return WithoutSeparators(std::move(value));
}

RowFormat::Values TypeFormat::NewValues() const {
    return {"", "1", "", ""};
}

std::optional<std::size_t> TypeFormat::FieldOf(int number) const {
    if (number < 1 || number > static_cast<int>(kTypeValues)) return std::nullopt;
    return static_cast<std::size_t>(number - 1);
}

std::unique_ptr<RowCheck> TypeFormat::NewCheck(const Text&, TextView content) const {
    return std::make_unique<ContentCheck>(language_, content, &CheckTypeCodes);
}

std::vector<DescribedChoice> TypeFormat::ChoicesOf(const DescribedKey& key,
                                                   const std::vector<FileItem>& items) const {
    if (key.control != ControlKind::Pick) return key.choices;
    std::vector<DescribedChoice> choices;
    for (const FileItem& item : items) {
        if (!item.isRow) continue;
        const Values values = ValuesOf(item);
        if (!values[kTypeCode].empty())
            choices.push_back({.value = values[kTypeCode],
                               .caption = {.number = 0, .own = values[kTypeCode] + " " + values[kTypeName]}});
    }
    return choices;
}

}  // namespace nordkeep
