#pragma once

#include "console/history/HistoryBox.h"
#include "console/history/ReportText.h"

namespace nordkeep {

/// The figures of a stretch of time: asked for, shown, printed.
class ReportBox final : private HistoryTaker {
 public:
    explicit ReportBox(const HistoryBox::Needs& needs) : needs_(needs) {}
    ~ReportBox() override { needs_.source.Forget(*this); }
    ReportBox(const ReportBox&) = delete;
    ReportBox& operator=(const ReportBox&) = delete;

    void SetView(WindowView* view) { view_ = view ? view : &noView_; }

    /// Usual stretches, in the order of their captions.
    enum class Usual { LastDay, Today, Yesterday, LastWeek, LastMonth };
    static constexpr int kUsualCount = 5;
    Text CaptionOf(Usual usual) const;
    ReportSpan SpanOf(Usual usual) const;

    void Make(const ReportSpan& span);
    bool IsBusy() const { return isBusy_; }
    bool HasFigures() const { return hasFigures_; }
    const AlarmFigures& Figures() const { return figures_; }
    Text Notice() const;
    bool IsTrouble() const { return !trouble_.empty() || figures_.isCut; }

    std::vector<ReportTable> Tables() const {
        return TablesOf(needs_.captions, figures_, needs_.clock.Now());
    }
    std::vector<Chart> Charts() const { return ChartsOf(needs_.captions, figures_); }
    void ExportTo(const NativePath& path);
    std::string Csv() const { return CsvOf(Tables()); }
    PrintDocument Document() const;
    void Print() { needs_.printer.Preview(Document()); }
    void Tick();

 private:
    void TakePage(std::int32_t, const HistoryPage&) override {}
    void TakeReport(std::int32_t number, const AlarmFigures& figures) override;

    HistoryBox::Needs needs_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    AlarmFigures figures_{};
    Text trouble_{};
    std::int32_t number_ = 0;
    Text saved_{};  // what the last export came to
    bool isBusy_ = false;
    bool hasFigures_ = false;
};

}  // namespace nordkeep
