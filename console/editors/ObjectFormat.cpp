#include "console/editors/ObjectFormat.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/AliveTestSchedule.h"
#include "translation/IdCodeFile.h"
#include "translation/SetCheck.h"

#include <algorithm>
#include <iterator>

namespace nordkeep {
namespace {

constexpr int kCaption = 4720;
constexpr int kCaptionEmpty = 4721;
// Headings, captions and helps of the fields.
constexpr int kGroupObject = 4722;
constexpr int kGroupSupervision = 4723;
constexpr int kGroupPlace = 4724;
constexpr int kGroupMore = 4725;
constexpr int kFirstCaption = 4730;  // in the order of the values
constexpr int kFirstHelp = 4745;
constexpr int kCaptionHeardNow = 4806;
constexpr std::size_t kMostChoices = 20000;

/// The check of a set's objects, of which one row can be looked at again.
class ObjectCheck final : public RowCheck {
 public:
    ObjectCheck(const Language& language, TextView content, SetSurroundings around)
        : findings_(language), isEmpty_(content.empty()) {
        if (!isEmpty_) check_.emplace(content, std::move(around), FileFindings(findings_, {}));
    }
    bool Continue() override {
        if (check_ && !isOver_ && check_->Continue()) return true;
        if (!isOver_) found_ = findings_.Take();
        isOver_ = true;
        return false;
    }
    const std::vector<Finding>& Found() const override { return found_; }
    std::vector<Finding> OfRow(const FileItem& row, int line, const std::function<Text()>&) override {
        if (!check_) return {};
        check_->CheckAgain(row.text, line);
        return findings_.Take();
    }

 private:
    Findings findings_;
    std::optional<IdCodeCheck> check_{};
    std::vector<Finding> found_{};
    bool isEmpty_;
    bool isOver_ = false;
};

}  // namespace

std::vector<FileItem> ItemsOf(std::vector<SetLine> lines) {
    std::vector<FileItem> items(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        items[i].isRow = lines[i].isRow;
        items[i].text = std::move(lines[i].text);
    }
    return items;
}

Text WithoutSeparators(Text value) {
    std::ranges::replace(value, ';', ',');
    return value;
}

int ObjectFormat::Caption() const {
    return kCaption;
}

int ObjectFormat::EmptyText() const {
    return kCaptionEmpty;
}

Text ObjectFormat::FileOf(const Text& name) const {
    return IdCodeFileName(name);
}

std::vector<FileItem> ObjectFormat::Items(TextView content) const {
    return ItemsOf(IdCodeLines(content));
}

std::vector<DescribedGroup> ObjectFormat::Groups() const {
    using K = ControlKind;
    const auto field = [](ObjectValue value, const char* name, ControlKind control) {
        const int number = static_cast<int>(value);
        return ListedField{name, control, kFirstCaption + number, kFirstHelp + number};
    };
    return {FieldGroup(kGroupObject,
                       {field(kObjectIdCode, "IdCode", K::Words), field(kObjectCaller, "Caller", K::Words),
                        field(kObjectName, "Name", K::Words)}),
            FieldGroup(kGroupSupervision, {field(kObjectSchedule, "AliveTest", K::Schedule)}),
            FieldGroup(kGroupPlace, {field(kObjectMap, "Map", K::MapPlace)}),
            FieldGroup(kGroupMore, {field(kObjectExportCode, "ExportCode", K::Words),
                                    field(kObjectExportProtocol, "ExportProtocol", K::Words),
                                    field(kObjectCustomer, "Customer", K::Pick),
                                    field(kObjectMatchToAccept, "CallerMustMatch", K::Switch),
                                    field(kObjectMatchForAliveTest, "CallIsSignOfLife", K::Switch),
                                    field(kObjectResetIdCode, "ResetIdCode", K::Pick),
                                    field(kObjectSchedule2, "AliveTest2", K::Schedule)})};
}

std::vector<RowFormat::Column> ObjectFormat::Columns() const {
    return {{kObjectIdCode, 95},    {kObjectName, 190}, {kObjectSchedule, 95},
            {kObjectCustomer, 130}, {kObjectMap, 130},  {kObjectCaller, 90}};
}

RowFormat::Values ObjectFormat::ValuesOf(const FileItem& row) const {
    return ValuesOfObject(row.text);
}

FileItem ObjectFormat::ItemOf(const Values& values, const FileItem& before) const {
    FileItem item = before;
    item.text = ObjectRow(values, before.text);
    return item;
}

FileItem ObjectFormat::TypedItem(const Values& values, const FileItem& before) const {
    // What the file says wrongly of a switch or a number is told as long as nobody has changed the row.
    if (values == ValuesOf(before)) return before;
    FileItem item = before;
    item.text = ObjectRowAsTyped(values, before.text);
    return item;
}

bool ObjectFormat::Loses(const Values& values) const {
    return LosesSchedule(values);
}

Text ObjectFormat::FitValue(const DescribedKey&, Text value) const {
    return WithoutSeparators(std::move(value));
}

Text ObjectFormat::HintOf(const DescribedKey& key, const Text& value) const {
    const bool isTest = key.control == ControlKind::Schedule;
    if (!isTest || !IsScheduleInUse(value) || FlawOf(value) != ScheduleFlaw::None) return {};
    const OleDate next = NextDeadline(value, needs_.clock.Now(), AliveTestPace::Minutes);
    return next.IsNever() ? Text()
                          : needs_.captions(kCaptionHeardNow, {FormatDate(next, "YYYY-MM-DD HH:NN:SS")});
}

RowFormat::Values ObjectFormat::NewValues() const {
    return ValuesOfObject({});
}

std::optional<std::size_t> ObjectFormat::FieldOf(int number) const {
    // The first field of a row is two values.
    if (number < 1 || number > static_cast<int>(kObjectValues) - 1) return std::nullopt;
    return number == 1 ? kObjectIdCode : static_cast<std::size_t>(number);
}

std::unique_ptr<RowCheck> ObjectFormat::NewCheck(const Text& name, TextView content) const {
    return std::make_unique<ObjectCheck>(needs_.language, content, needs_.host.SurroundingsOf(name));
}

std::vector<DescribedChoice> ObjectFormat::MapChoices() const {
    std::vector<DescribedChoice> maps;
    for (Text& file : needs_.host.Maps()) maps.push_back({.value = std::move(file), .caption = {}});
    return maps;
}

std::vector<DescribedChoice> ObjectFormat::ChoicesOf(const DescribedKey& key,
                                                     const std::vector<FileItem>& items) const {
    if (key.control == ControlKind::MapPlace) return MapChoices();
    if (key.control != ControlKind::Pick) return key.choices;
    const bool isReset = key.key == "ResetIdCode";
    std::vector<Text> values;
    for (const FileItem& item : items) {
        if (!item.isRow || values.size() >= kMostChoices) continue;
        Text value = std::move(ValuesOf(item)[isReset ? kObjectIdCode : kObjectCustomer]);
        if (!value.empty()) values.push_back(std::move(value));
    }
    std::ranges::sort(values);
    values.erase(std::unique(values.begin(), values.end()), values.end());
    std::vector<DescribedChoice> choices;
    for (Text& value : values) choices.push_back({.value = std::move(value), .caption = {}});
    return choices;
}

}  // namespace nordkeep
