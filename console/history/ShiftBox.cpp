#include "console/history/ShiftBox.h"

#include "console/history/ReportText.h"
#include "console/lists/AgeText.h"
#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionNote = 5580;
constexpr int kTextSigned = 5582;
constexpr int kTextNotSigned = 5583;
constexpr int kCaptionFigures = 5584;
constexpr int kTextAlarms = 5586;
constexpr int kTextTouched = 5587;
constexpr int kTextEnded = 5588;
constexpr int kTextFrequent = 5589;
constexpr int kTextWorking = 5534;
constexpr int kTextUnreadable = 5529;
constexpr std::size_t kShownSources = 3;

}  // namespace

void ShiftBox::Open() {
    note_.clear();
    notice_.clear();
    isSignedOver_ = false;
    Ask();
    view_->Show(OpenedBy::Operator);
}

void ShiftBox::SetHours(int hours) {
    hours_ = std::clamp(hours, 1, 24);
    Ask();
    view_->Refresh();
}

void ShiftBox::Ask() {
    parts_ = needs_.list.Parts();
    const Text why = WhyNot(needs_.captions, needs_.source.Readiness());
    const ShiftList::Part figures{.heading = needs_.captions(kCaptionFigures, {std::to_string(hours_)}),
                                  .lines = {why.empty() ? needs_.captions(kTextWorking) : why}};
    parts_.insert(parts_.begin(), figures);
    const OleDate now = needs_.clock.Now();
    if (why.empty()) needs_.source.Ask(*this, ++number_, ReportSpan{now.PlusMinutes(-60 * hours_), now});
}

void ShiftBox::TakeReport(std::int32_t number, const AlarmFigures& figures) {
    if (number != number_ || parts_.empty()) return;
    const auto span = [&](int text, const Durations& took) {
        return needs_.captions(text, {SpanText(took.median), SpanText(took.ofTwenty), SpanText(took.worst)});
    };
    std::vector<Text> lines = {
        needs_.captions(kTextAlarms, {std::to_string(figures.alarms), std::to_string(figures.WorstBin()),
                                      PercentText(figures.FloodShare(needs_.clock.Now()))})};
    if (figures.all.touch.count > 0) lines.push_back(span(kTextTouched, figures.all.touch));
    if (figures.all.end.count > 0) lines.push_back(span(kTextEnded, figures.all.end));
    for (std::size_t i = 0; i < std::min(kShownSources, figures.frequent.size()); ++i) {
        const AlarmSource& source = figures.frequent[i];
        lines.push_back(needs_.captions(kTextFrequent, {source.name.empty() ? source.object : source.name,
                                                        std::to_string(source.count)}));
    }
    if (!figures.isReadable) lines = {needs_.captions(kTextUnreadable)};
    parts_.front().lines = std::move(lines);
    view_->Refresh();
}

void ShiftBox::SignOver() {
    if (isSignedOver_) return;
    Text list;
    for (const Text& line : Document().lines) list += line + "\r\n";
    isSignedOver_ = needs_.source.SignOver(note_, list);
    notice_ = isSignedOver_ ? needs_.captions(kTextSigned, {FormatDate(needs_.clock.Now(), "HH:NN:SS")})
                            : needs_.captions(kTextNotSigned);
    view_->Refresh();
}

PrintDocument ShiftBox::Document() const {
    PrintDocument document = needs_.list.DocumentOf(parts_);
    if (note_.empty()) return document;
    document.lines.push_back(needs_.captions(kCaptionNote));
    TextView rest = note_;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size() - 1);
        TextView line = rest.substr(0, end + 1);
        while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.remove_suffix(1);
        document.lines.push_back("   " + Text(line));
        rest.remove_prefix(end + 1);
    }
    return document;
}

}  // namespace nordkeep
