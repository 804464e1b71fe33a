#include "console/history/ReportText.h"

#include "console/editors/CsvText.h"
#include "console/history/HistoryBox.h"
#include "console/lists/AgeText.h"
#include "runtime/Dates.h"
#include "runtime/Doer.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionObject = 5487;
constexpr int kCaptionType = 5488;
constexpr int kCaptionReport = 5546;
constexpr int kCaptionAlarms = 5547;
constexpr int kCaptionWorstBin = 5548;
constexpr int kCaptionFloods = 5549;
constexpr int kCaptionFloodTime = 5550;
constexpr int kCaptionFirstOfReactions = 5551;
constexpr int kCaptionOf95 = 5553;
constexpr int kCaptionWorst = 5554;
constexpr int kCaptionCommented = 5555;
constexpr int kCaptionEnded = 5556;
constexpr int kCaptionAll = 5557;
constexpr int kCaptionByPriority = 5558;
constexpr int kCaptionByHour = 5559;
constexpr int kCaptionByOperator = 5560;
constexpr int kCaptionFirstOfSources = 5561;
constexpr int kCaptionBins = 5565;
constexpr int kCaptionHours = 5566;
constexpr int kCaptionFloodLimit = 5567;
constexpr int kCaptionWorstBins = 5568;
constexpr int kCaptionNone = 5569;
constexpr int kCaptionNumber = 5570;
constexpr int kCaptionShare = 5571;
constexpr int kCaptionGroup = 5572;
constexpr int kCaptionHere = 5573;

constexpr std::int32_t kFloodLimit = 10;
/// As many bars as can be told apart; a day has as many ten minutes.
constexpr std::size_t kMostBars = 144;

std::vector<Text> CellsOf(const Captions& captions, const Reaction& reaction, bool isTotal) {
    const Text here = reaction.group == kHere ? captions(kCaptionHere) : reaction.group;
    std::vector<Text> cells = {isTotal ? captions(kCaptionAll) : here, std::to_string(reaction.alarms)};
    for (const Durations* span : {&reaction.touch, &reaction.comment, &reaction.end}) {
        for (const std::int32_t seconds : {span->median, span->ofTwenty, span->worst})
            cells.push_back(span->count == 0 ? Text("-") : SpanText(seconds));
    }
    return cells;
}

ReportTable ReactionTable(const Captions& captions, int heading, const std::vector<Reaction>& reactions,
                          const Reaction* total) {
    ReportTable table{.heading = captions(heading),
                      .columns = {captions(kCaptionGroup), captions(kCaptionFirstOfReactions)}};
    for (const int first : {kCaptionFirstOfReactions + 1, kCaptionCommented, kCaptionEnded}) {
        for (const int caption : {first, kCaptionOf95, kCaptionWorst})
            table.columns.push_back(captions(caption));
    }
    for (const Reaction& reaction : reactions) table.rows.push_back(CellsOf(captions, reaction, false));
    if (total) table.rows.push_back(CellsOf(captions, *total, true));
    return table;
}

ReportTable SourceTable(const Captions& captions, int heading, const std::vector<AlarmSource>& sources) {
    ReportTable table{
        .heading = captions(heading),
        .columns = {captions(kCaptionNumber), captions(kCaptionObject), captions(kCaptionType)}};
    for (const AlarmSource& source : sources) {
        const bool hasName = !source.name.empty() && source.name != source.object;
        table.rows.push_back({std::to_string(source.count),
                              hasName ? source.name + " (" + source.object + ")" : source.object,
                              source.type});
    }
    return table;
}

ReportTable Overview(const Captions& captions, const AlarmFigures& figures, OleDate now) {
    const Text share =
        captions(kCaptionShare, {SpanText(figures.floodSeconds), PercentText(figures.FloodShare(now))});
    return {.heading = captions(kCaptionReport, {FormatDate(figures.from, "YYYY-MM-DD HH:NN"),
                                                 FormatDate(figures.to, "YYYY-MM-DD HH:NN")}),
            .columns = {},
            .rows = {{captions(kCaptionAlarms), std::to_string(figures.alarms)},
                     {captions(kCaptionWorstBin), std::to_string(figures.WorstBin())},
                     {captions(kCaptionFloods), std::to_string(figures.floods)},
                     {captions(kCaptionFloodTime), share}}};
}

Chart BinChart(const Captions& captions, const AlarmFigures& figures) {
    const std::size_t each = std::max<std::size_t>(1, (figures.bins.size() + kMostBars - 1) / kMostBars);
    Chart chart{.title = captions(kCaptionBins),
                .limit = kFloodLimit,
                .limitText = captions(kCaptionFloodLimit, {std::to_string(kFloodLimit)})};
    if (each > 1) {
        const auto seconds = static_cast<std::int64_t>(each) * AlarmFigures::kBinMinutes * 60;
        chart.title = captions(kCaptionWorstBins, {SpanText(seconds)});
    }
    const std::size_t bars = (figures.bins.size() + each - 1) / each;
    const bool isLong = figures.bins.size() > kMostBars + 1;
    for (std::size_t bar = 0; bar < bars; ++bar) {
        const auto begin = figures.bins.begin() + static_cast<std::ptrdiff_t>(bar * each);
        const auto left = static_cast<std::size_t>(figures.bins.end() - begin);
        const auto end = begin + static_cast<std::ptrdiff_t>(std::min(each, left));
        const OleDate at =
            figures.from.PlusMinutes(static_cast<std::int64_t>(bar * each) * AlarmFigures::kBinMinutes);
        // Six to twelve labels are as many as have room.
        const bool isLabelled = bar % std::max<std::size_t>(1, bars / 8) == 0;
        chart.bars.push_back({isLabelled ? FormatDate(at, isLong ? "MM-DD HH:NN" : "HH:NN") : Text(),
                              *std::max_element(begin, end)});
    }
    return chart;
}

Chart HourChart(const Captions& captions, const AlarmFigures& figures) {
    Chart chart{.title = captions(kCaptionHours)};
    for (int hour = 0; hour < 24; ++hour) {
        const Text name = Digits(hour, 2);
        const auto found = std::ranges::find(figures.byHour, name, &Reaction::group);
        constexpr int kLabelEach = 3;
        chart.bars.push_back(
            {hour % kLabelEach == 0 ? name : Text(), found == figures.byHour.end() ? 0 : found->alarms});
    }
    return chart;
}

}  // namespace

Text PercentText(std::int32_t thousandths) {
    return std::to_string(thousandths / 10) + "." + std::to_string(thousandths % 10);
}

std::vector<ReportTable> TablesOf(const Captions& captions, const AlarmFigures& figures, OleDate now) {
    std::vector<ReportTable> tables = {
        Overview(captions, figures, now),
        ReactionTable(captions, kCaptionByPriority, figures.byPriority, &figures.all),
        ReactionTable(captions, kCaptionByOperator, figures.byOperator, nullptr),
        ReactionTable(captions, kCaptionByHour, figures.byHour, nullptr)};
    int heading = kCaptionFirstOfSources;
    for (const auto* sources : {&figures.frequent, &figures.chattering, &figures.stale, &figures.unknown}) {
        tables.push_back(SourceTable(captions, heading++, *sources));
    }
    // Nobody is told of the type where all types count together.
    ReportTable& frequent = tables[4];
    frequent.columns.pop_back();
    for (auto& row : frequent.rows) row.pop_back();
    return tables;
}

std::vector<Chart> ChartsOf(const Captions& captions, const AlarmFigures& figures) {
    return {BinChart(captions, figures), HourChart(captions, figures)};
}

std::vector<Text> LinesOf(const Captions& captions, const std::vector<ReportTable>& tables) {
    std::vector<Text> lines;
    for (const ReportTable& table : tables) {
        std::vector<std::vector<Text>> rows = table.rows;
        if (!table.columns.empty()) rows.insert(rows.begin(), table.columns);
        std::vector<std::size_t> widths;
        for (const auto& row : rows) {
            widths.resize(std::max(widths.size(), row.size()));
            for (std::size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
        }
        lines.push_back(table.heading);
        for (const auto& row : rows) {
            Text line = "  ";
            for (std::size_t i = 0; i < row.size(); ++i) line += FitWidth(row[i], widths[i]) + "  ";
            lines.push_back(std::move(line));
        }
        if (table.rows.empty()) lines.push_back("  " + captions(kCaptionNone));
        lines.emplace_back();
    }
    return lines;
}

std::string CsvOf(const std::vector<ReportTable>& tables) {
    std::string csv = "\xEF\xBB\xBF";
    for (const ReportTable& table : tables) {
        csv += CsvLine({table.heading});
        if (!table.columns.empty()) csv += CsvLine(table.columns);
        for (const auto& row : table.rows) {
            std::vector<Text> plain;
            for (const Text& cell : row) plain.push_back(PlainCell(cell));
            csv += CsvLine(plain);
        }
        csv += "\r\n";
    }
    return csv;
}

}  // namespace nordkeep
