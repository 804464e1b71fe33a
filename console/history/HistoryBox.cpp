#include "console/history/HistoryBox.h"

#include "console/editors/CsvText.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kCaptionTitle = 5482;
constexpr int kTextSearching = 5525;
constexpr int kTextSoFar = 5526;
constexpr int kTextAll = 5527;
constexpr int kTextNothing = 5528;
constexpr int kTextUnreadable = 5529;
constexpr int kTextNoTime = 5533;
constexpr int kTextFull = 5536;
constexpr int kCaptionCase = 5537;
constexpr TextView kMinutes = "YYYY-MM-DD HH:NN";
/// Columns on paper, in characters.
constexpr std::size_t kPaperWidths[] = {19, 18, 30, 20, 4, 40, 14, 30};

}  // namespace

Text PlainCell(Text value) {
    constexpr TextView kFormula = "=+-@\t";
    const bool isFormula = !value.empty() && kFormula.find(value.front()) != TextView::npos;
    return isFormula ? "'" + value : value;
}

Text SaveTable(const Captions& captions, const NativePath& path, const std::string& csv) {
    constexpr int kTextSaved = 5539;
    constexpr int kTextNotSaved = 5579;
    return captions(ReplaceFile(path, csv) ? kTextSaved : kTextNotSaved, {FromUtf8(path)});
}

Text WhyNot(const Captions& captions, HistorySource::State state) {
    constexpr int kFirst = 5530;
    return state == HistorySource::State::Ready ? Text() : captions(kFirst + static_cast<int>(state) - 1);
}

void HistoryBox::Open() {
    if (!hasSearched_ && fields_.from.empty())
        fields_.from = FormatDate(needs_.clock.Now().PlusDays(-1), kMinutes);
    view_->Show(OpenedBy::Operator);
    if (!hasSearched_) Search(fields_);
}

bool HistoryBox::TakeTime(const Text& text, OleDate& time) {
    if (TrimBlanks(text).empty()) return true;
    const auto read = ParseDateTime(TrimBlanks(text));
    if (read) time = *read;
    if (!read) trouble_ = needs_.captions(kTextNoTime, {text});
    return read.has_value();
}

void HistoryBox::Search(const Fields& fields) {
    fields_ = fields;
    HistoryQuery query{.what = fields.what,
                       .object = Text(TrimBlanks(fields.object)),
                       .type = Text(TrimBlanks(fields.type)),
                       .priority = Text(TrimBlanks(fields.priority)),
                       .doer = Text(TrimBlanks(fields.doer)),
                       .text = Text(TrimBlanks(fields.text))};
    if (TakeTime(fields.from, query.from) && TakeTime(fields.to, query.to)) return Begin(query);
    view_->Refresh();
}

void HistoryBox::OpenFor(const Text& idCode) {
    Begin({.exactObject = idCode});
    fields_ = {.object = idCode};
    view_->Show(OpenedBy::Operator);
}

void HistoryBox::OpenCase(TextView key) {
    const HistoryEntry* entry = rows_.EntryOf(key);
    if (entry && !entry->event.empty()) Begin({.event = entry->event});
}

void HistoryBox::Begin(const HistoryQuery& query) {
    query_ = query;
    hasSearched_ = true;
    reached_ = {};
    trouble_.clear();
    rows_.Clear();
    wanted_ = HistoryWalk::kPage;
    Ask();
}

void HistoryBox::Ask() {
    hasMore_ = false;
    saved_.clear();
    trouble_ = WhyNot(needs_.captions, needs_.source.Readiness());
    isBusy_ = trouble_.empty();
    if (isBusy_) needs_.source.Ask(*this, ++number_, query_);
    view_->Refresh();
}

void HistoryBox::More() {
    if (isBusy_ || !HasMore()) return;
    wanted_ = rows_.Entries().size() + HistoryWalk::kPage;
    Ask();
}

void HistoryBox::FetchAll() {
    if (isBusy_ || !HasMore()) return;
    wanted_ = kMostRows;
    Ask();
}

void HistoryBox::Stop() {
    if (!isBusy_) return;
    needs_.source.Forget(*this);
    ++number_;
    isBusy_ = false;
    hasMore_ = true;
    view_->Refresh();
}

void HistoryBox::TakePage(std::int32_t number, const HistoryPage& page) {
    if (number != number_) return;
    isBusy_ = false;
    if (!page.isReadable) trouble_ = needs_.captions(kTextUnreadable);
    rows_.Add(page.entries);
    hasMore_ = page.isReadable && !page.isEnd;
    query_.after = page.reached;
    if (!page.reached.IsBegin()) reached_ = needs_.clock.LocalOf(UtcMsOf(page.reached.time));
    if (HasMore() && rows_.Entries().size() < wanted_) return Ask();
    view_->Refresh();
}

void HistoryBox::Tick() {
    if (!isBusy_ || needs_.source.Readiness() == HistorySource::State::Ready) return;
    Stop();
    trouble_ = WhyNot(needs_.captions, needs_.source.Readiness());
    view_->Refresh();
}

Text HistoryBox::Notice() const {
    if (!trouble_.empty()) return trouble_;
    if (!saved_.empty()) return saved_;
    if (!hasSearched_) return {};
    const Text count = std::to_string(rows_.Entries().size());
    const Text back = FormatDate(reached_.IsNever() ? needs_.clock.Now() : reached_, kMinutes);
    if (isBusy_) return needs_.captions(kTextSearching, {back, count});
    if (IsFull()) return needs_.captions(kTextFull, {count});
    if (hasMore_) return needs_.captions(kTextSoFar, {count, back});
    return rows_.Entries().empty() ? needs_.captions(kTextNothing) : needs_.captions(kTextAll, {count});
}

Text HistoryBox::Title() const {
    return query_.event.empty() ? needs_.captions(kCaptionTitle)
                                : needs_.captions(kCaptionCase, {FromUtf8(query_.event)});
}

void HistoryBox::ExportTo(const NativePath& path) {
    saved_ = SaveTable(needs_.captions, path, Csv());
    view_->Refresh();
}

std::string HistoryBox::Csv() const {
    std::string csv = "\xEF\xBB\xBF";
    std::vector<Text> values;
    for (int column = 0; column < rows_.ColumnCount(); ++column) values.push_back(rows_.Heading(column));
    csv += CsvLine(values);
    for (const HistoryEntry& entry : rows_.Entries()) {
        values.clear();
        for (int column = 0; column < rows_.ColumnCount(); ++column)
            values.push_back(PlainCell(rows_.Value(entry, column)));
        csv += CsvLine(values);
    }
    return csv;
}

// The oldest first: paper is read from its begin.
PrintDocument HistoryBox::Document() const {
    PrintDocument document{.title = Title(), .look = needs_.printerSettings};
    const auto line = [&](auto value) {
        Text text;
        for (int column = 0; column < rows_.ColumnCount(); ++column) {
            const std::size_t width = kPaperWidths[column];
            text += FitWidth(Printable(value(column)), width) + " ";
        }
        return text;
    };
    document.heading = line([&](int column) { return rows_.Heading(column); });
    const auto& entries = rows_.Entries();
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        document.lines.push_back(line([&](int column) { return rows_.Value(*entry, column); }));
    return document;
}

}  // namespace nordkeep
