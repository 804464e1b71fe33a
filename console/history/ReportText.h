#pragma once

#include "console/lists/Captions.h"
#include "console/print/Chart.h"
#include "reports/AlarmFigures.h"

namespace nordkeep {

/// A table of a report: a heading, names of columns, rows of texts.
struct ReportTable {
    Text heading{};
    std::vector<Text> columns{};
    std::vector<std::vector<Text>> rows{};
};

/// Figures as people read them.
std::vector<ReportTable> TablesOf(const Captions& captions, const AlarmFigures& figures, OleDate now);
std::vector<Chart> ChartsOf(const Captions& captions, const AlarmFigures& figures);
/// The tables below each other in lines of fixed width.
std::vector<Text> LinesOf(const Captions& captions, const std::vector<ReportTable>& tables);
/// In UTF-8, with a mark in front.
std::string CsvOf(const std::vector<ReportTable>& tables);
/// Thousandths as "12.5".
Text PercentText(std::int32_t thousandths);

}  // namespace nordkeep
