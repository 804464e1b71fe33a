#include "console/editors/CsvText.h"
#include "console/editors/RowsBox.h"
#include "platform/Files.h"

#include <algorithm>
#include <map>

namespace nordkeep {
namespace {

constexpr int kCaptionNoKey = 4810;
constexpr int kCaptionOpenQuote = 4811;
constexpr int kCaptionTooManyValues = 4812;
constexpr int kCaptionNoKeyValue = 4813;
constexpr int kCaptionKeyAgain = 4814;
constexpr int kCaptionLetters = 4815;
constexpr int kCaptionImported = 4816;
constexpr int kCaptionSummary = 4817;
constexpr int kCaptionUnknownColumns = 4818;
constexpr int kCaptionExported = 4820;
constexpr int kCaptionNotWritten = 4821;
constexpr int kCaptionNotRead = 4822;
constexpr std::size_t kMostPreviewed = 300;

/// What cannot stand in the files of a centre.
bool FitsInFiles(const std::string& utf8) {
    return ToUtf8(FromUtf8(utf8)) == utf8;
}

}  // namespace

std::string RowsBox::Export() const {
    std::vector<Text> names;
    for (const SetupField& field : fields_) names.push_back(field.key.key);
    std::string csv = CsvLine(names);
    for (const FileItem& item : items_) {
        if (item.isRow) csv += CsvLine(format_.ValuesOf(item));
    }
    return csv;
}

/// Makes the plan of an import, line by line.
class RowsBox::Importer {
 public:
    Importer(const RowsBox& box, std::string_view utf8)
        : box_(box), items_(box.items_), csv_(ReadCsv(utf8)) {}

    ImportPlan Plan() {
        if (csv_.openQuoteOn != 0) Refuse(kCaptionOpenQuote, {std::to_string(csv_.openQuoteOn)});
        if (HasFault() || !TakeHeader()) return std::move(plan_);
        for (std::size_t place = 0; place < items_.size(); ++place) {
            if (items_[place].isRow) rows_.try_emplace(KeyOf(box_.format_.ValuesOf(items_[place])), place);
        }
        const std::size_t before = rows_.size();
        for (std::size_t line = 1; line < csv_.lines.size() && !HasFault(); ++line)
            TakeLine(csv_.lines[line]);
        plan_.notInFile = before - std::min(before, plan_.changed + plan_.same);
        return std::move(plan_);
    }

 private:
    bool HasFault() const { return !plan_.fault.empty(); }
    void Refuse(int caption, std::initializer_list<TextView> values) {
        plan_.fault = box_.needs_.captions(caption, values);
    }
    Text KeyOf(const RowFormat::Values& values) const {
        return UpperCase(TrimBlanks(values[box_.format_.KeyField()]));
    }
    bool TakeHeader() {
        bool hasKey = false;
        const auto line = csv_.lines.empty() ? CsvTable::Line() : csv_.lines.front();
        for (const std::string& name : line.values) {
            const auto is = [&](const SetupField& field) {
                return EqualsNoCase(field.key.key, TrimBlanks(FromUtf8(name)));
            };
            const auto known = std::ranges::find_if(box_.fields_, is);
            if (known == box_.fields_.end()) plan_.unknown.push_back(FromUtf8(name));
            const auto field = static_cast<std::size_t>(known - box_.fields_.begin());
            columns_.push_back(field);
            hasKey = hasKey || field == box_.format_.KeyField();
        }
        const Text& key = box_.fields_[box_.format_.KeyField()].key.key;
        if (!hasKey) Refuse(kCaptionNoKey, {key});
        return hasKey;
    }
    void TakeLine(const CsvTable::Line& line) {
        const Text number = std::to_string(line.number);
        if (line.values.size() > columns_.size()) return Refuse(kCaptionTooManyValues, {number});
        if (!std::ranges::all_of(line.values, FitsInFiles)) return Refuse(kCaptionLetters, {number});
        RowFormat::Values named = box_.format_.NewValues();
        Fill(named, line);
        const Text key = KeyOf(named);
        if (key.empty()) return Refuse(kCaptionNoKeyValue, {number});
        if (!seen_.insert(key).second) return Refuse(kCaptionKeyAgain, {number, key});
        const auto known = rows_.find(key);
        known == rows_.end() ? AddRow(named) : ChangeRow(known->second, line);
    }
    void Fill(RowFormat::Values& values, const CsvTable::Line& line) const {
        for (std::size_t column = 0; column < line.values.size(); ++column) {
            const std::size_t field = columns_[column];
            if (field >= values.size()) continue;
            values[field] = box_.format_.FitValue(box_.fields_[field].key, FromUtf8(line.values[column]));
        }
    }
    void AddRow(const RowFormat::Values& values) {
        ++plan_.added;
        FileItem row{.isRow = true};
        row = box_.format_.ItemOf(values, row);
        Preview("+ " + row.text);
        for (ItemChange& change : box_.Inserted(items_, row)) {
            ApplyStep(items_, {change});
            plan_.step.push_back(std::move(change));
        }
    }
    void ChangeRow(std::size_t place, const CsvTable::Line& line) {
        const FileItem before = items_[place];
        const RowFormat::Values old = box_.format_.ValuesOf(before);
        RowFormat::Values values = old;
        Fill(values, line);
        values[box_.format_.KeyField()] = old[box_.format_.KeyField()];
        if (values == old) {
            ++plan_.same;
            return;
        }
        ++plan_.changed;
        Text text = "~ " + values[box_.format_.KeyField()];
        for (std::size_t field = 0; field < values.size(); ++field) {
            if (values[field] == old[field]) continue;
            text += "  " + box_.fields_[field].caption + ": " + old[field] + " > " + values[field];
        }
        Preview(std::move(text));
        plan_.step.push_back(
            {.place = place, .before = before, .after = box_.format_.ItemOf(values, before)});
        items_[place] = *plan_.step.back().after;
    }
    void Preview(Text text) {
        if (plan_.preview.size() < kMostPreviewed) plan_.preview.push_back(std::move(text));
    }

    const RowsBox& box_;
    std::vector<FileItem> items_;
    CsvTable csv_;
    ImportPlan plan_{};
    std::vector<std::size_t> columns_{};  // the field of each column
    std::map<Text, std::size_t> rows_{};  // by key, to their places
    std::set<Text> seen_{};
};

RowsBox::ImportPlan RowsBox::PlanImport(std::string_view utf8) const {
    return Importer(*this, utf8).Plan();
}

void RowsBox::Import(std::string_view utf8) {
    if (!MayEdit() || isBusy_) return;
    ImportPlan plan = PlanImport(utf8);
    if (!plan.fault.empty() || plan.step.empty()) return;
    for (ItemChange& change : plan.step) {
        if (!change.before && change.after->isRow) change.after->id = ++lastId_;
    }
    const Text count = std::to_string(plan.added + plan.changed);
    const int inFront = row_ ? items_[*row_].id : 0;
    Do(std::move(plan.step), inFront);
    Say(kCaptionImported, {count}, true);
    view_->Refresh();
}

void RowsBox::ExportTo(const NativePath& path) {
    const std::string csv = Export();
    const auto rows = std::ranges::count_if(items_, &FileItem::isRow);
    const bool isWritten = ReplaceFile(path, csv);
    const Text name = FromUtf8(path);
    isWritten ? Say(kCaptionExported, {std::to_string(rows), name}, true)
              : Say(kCaptionNotWritten, {name}, false);
    view_->Refresh();
}

std::optional<std::string> RowsBox::TextToImport(const NativePath& path) {
    auto text = ReadFile(path);
    if (!text) {
        Say(kCaptionNotRead, {FromUtf8(path)}, false);
        view_->Refresh();
    }
    return text;
}

Text RowsBox::SummaryOf(const ImportPlan& plan) const {
    if (!plan.fault.empty()) return plan.fault;
    Text text = needs_.captions(kCaptionSummary, {std::to_string(plan.added), std::to_string(plan.changed),
                                                  std::to_string(plan.same), std::to_string(plan.notInFile)});
    Text unknown;
    for (const Text& column : plan.unknown) unknown.append(unknown.empty() ? "" : ", ").append(column);
    if (!unknown.empty()) text += "\n" + needs_.captions(kCaptionUnknownColumns, {unknown});
    return text;
}

}  // namespace nordkeep
