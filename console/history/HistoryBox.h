#pragma once

#include "console/history/HistoryRows.h"
#include "console/lists/WindowView.h"
#include "console/print/PrintDocument.h"
#include "platform/Clock.h"
#include "reports/HistorySource.h"

namespace nordkeep {

/// Why the history cannot be asked; empty when it can.
Text WhyNot(const Captions& captions, HistorySource::State state);

/// A value for another program's table: what somebody outside has sent must not count as a formula there.
Text PlainCell(Text value);

/// Writes a table for other programs, and says what came of it.
Text SaveTable(const Captions& captions, const NativePath& path, const std::string& csv);

/// Looks for entries of the journal.
class HistoryBox final : private HistoryTaker {
 public:
    /// More rows than these nobody reads; who wants them narrows the search.
    static constexpr std::size_t kMostRows = 10'000;

    struct Needs {
        HistorySource& source;
        const Captions& captions;
        const Clock& clock;
        PrintOutput& printer;
        const PrinterSettings& printerSettings;
    };
    explicit HistoryBox(const Needs& needs) : needs_(needs), rows_(needs.captions) {}
    ~HistoryBox() override { needs_.source.Forget(*this); }
    HistoryBox(const HistoryBox&) = delete;
    HistoryBox& operator=(const HistoryBox&) = delete;

    void SetView(WindowView* view) { view_ = view ? view : &noView_; }
    const Captions& Words() const { return needs_.captions; }

    /// What is typed. Times are "2026-11-22 07:30", also without the end; the day alone is its midnight.
    struct Fields {
        Text from{};
        Text to{};
        HistoryQuery::What what = HistoryQuery::What::AlarmsAndDeeds;
        Text object{};
        Text type{};
        Text priority{};
        Text doer{};
        Text text{};
    };
    const Fields& Wanted() const { return fields_; }
    /// The last day.
    void Open();
    void Search(const Fields& fields);
    /// What there is about one object, by its code.
    void OpenFor(const Text& idCode);
    /// All that is known of the case of a row.
    void OpenCase(TextView key);
    void More();
    void FetchAll();
    void Stop();

    HistoryRows& Rows() { return rows_; }
    bool IsBusy() const { return isBusy_; }
    bool HasMore() const { return hasMore_ && !IsFull(); }
    /// What has been found, or why nothing is.
    Text Notice() const;
    /// The notice is about something that has gone wrong.
    bool IsTrouble() const { return !trouble_.empty(); }
    Text Title() const;

    void ExportTo(const NativePath& path);
    /// The rows as they stand, in UTF-8 with a mark in front.
    std::string Csv() const;
    PrintDocument Document() const;
    void Print() { needs_.printer.Preview(Document()); }
    /// To be called several times a second: a server may go while it is asked.
    void Tick();

 private:
    void TakePage(std::int32_t number, const HistoryPage& page) override;
    void TakeReport(std::int32_t, const AlarmFigures&) override {}
    bool TakeTime(const Text& text, OleDate& time);
    void Begin(const HistoryQuery& query);
    void Ask();
    bool IsFull() const { return rows_.Entries().size() >= kMostRows; }

    Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    HistoryRows rows_;
    Fields fields_{};
    HistoryQuery query_{};
    Text trouble_{};
    std::int32_t number_ = 0;
    std::size_t wanted_ = 0;  // rows, before it stops by itself
    OleDate reached_{};
    Text saved_{};  // what the last export came to
    bool isBusy_ = false;
    bool hasMore_ = false;
    bool hasSearched_ = false;
};

}  // namespace nordkeep
