#include "console/history/ReportBox.h"

namespace nordkeep {
namespace {

constexpr int kTextUnreadable = 5529;
constexpr int kTextWorking = 5534;
constexpr int kTextCut = 5535;
constexpr int kTextUnusable = 5538;
constexpr int kCaptionFirstUsual = 5540;

}  // namespace

Text ReportBox::CaptionOf(Usual usual) const {
    return needs_.captions(kCaptionFirstUsual + static_cast<int>(usual));
}

ReportSpan ReportBox::SpanOf(Usual usual) const {
    const OleDate now = needs_.clock.Now();
    const OleDate today = now.Midnight();
    switch (usual) {
        case Usual::LastDay:
            return {now.PlusDays(-1), now};
        case Usual::Today:
            return {today, today.PlusDays(1)};
        case Usual::Yesterday:
            return {today.PlusDays(-1), today};
        case Usual::LastWeek:
            return {today.PlusDays(-6), today.PlusDays(1)};
        case Usual::LastMonth:
            return {today.PlusDays(-30), today.PlusDays(1)};
    }
    return {};
}

void ReportBox::Make(const ReportSpan& span) {
    saved_.clear();
    trouble_ = WhyNot(needs_.captions, needs_.source.Readiness());
    if (!IsUsable(span)) trouble_ = needs_.captions(kTextUnusable, {std::to_string(ReportSpan::kMostDays)});
    isBusy_ = trouble_.empty();
    if (isBusy_) needs_.source.Ask(*this, ++number_, span);
    view_->Refresh();
}

void ReportBox::TakeReport(std::int32_t number, const AlarmFigures& figures) {
    if (number != number_) return;
    isBusy_ = false;
    figures_ = figures;
    hasFigures_ = figures.isReadable;
    if (!figures.isReadable) trouble_ = needs_.captions(kTextUnreadable);
    view_->Refresh();
}

void ReportBox::Tick() {
    if (!isBusy_ || needs_.source.Readiness() == HistorySource::State::Ready) return;
    isBusy_ = false;
    ++number_;
    trouble_ = WhyNot(needs_.captions, needs_.source.Readiness());
    view_->Refresh();
}

Text ReportBox::Notice() const {
    if (!trouble_.empty()) return trouble_;
    if (isBusy_) return needs_.captions(kTextWorking);
    if (!saved_.empty()) return saved_;
    return figures_.isCut ? needs_.captions(kTextCut, {std::to_string(figures_.alarms)}) : Text();
}

void ReportBox::ExportTo(const NativePath& path) {
    saved_ = SaveTable(needs_.captions, path, Csv());
    view_->Refresh();
}

PrintDocument ReportBox::Document() const {
    const std::vector<ReportTable> tables = Tables();
    return {.title = tables.front().heading,
            .heading = {},
            .lines = LinesOf(needs_.captions, tables),
            .charts = Charts(),
            .look = needs_.printerSettings};
}

}  // namespace nordkeep
