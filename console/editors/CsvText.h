#pragma once

#include "platform/Text.h"

#include <string>
#include <string_view>
#include <vector>

namespace nordkeep {

/// A table as other programs exchange it: UTF-8, values separated by commas (read also semicolons or
/// tabulators, whichever the first line has), quotes around a value that needs them, a line each row.
struct CsvTable {
    struct Line {
        int number = 0;  // in the file, from 1
        std::vector<std::string> values{};
    };
    std::vector<Line> lines{};  // without those that are empty
    int openQuoteOn = 0;        // the line in which a quote begins that never ends; 0 for none
};
CsvTable ReadCsv(std::string_view utf8);

/// One line, with its line end.
std::string CsvLine(const std::vector<Text>& values);

}  // namespace nordkeep
