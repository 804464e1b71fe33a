#pragma once

#include "console/print/Chart.h"
#include "runtime/Settings.h"
#include "runtime/SharedSettings.h"

namespace nordkeep {

/// How pages look, section General of the workstation's own settings.
struct PrinterSettings : PrinterDateSettings {
    Text FontName{};  // empty: a font of fixed width
    bool FontBold = false;
    bool FontItalic = false;
    int FontSize = 0;     // points; 0: a common size
    int LeftMargin = 15;  // mm
    int TopMargin = 0;    // mm
    Text DumpPrinterFormat{};
};
std::span<const SettingRow<PrinterSettings>> PrinterSettingRows();
/// Keeps the font for later starts.
void SavePrinterFont(Settings& files, const PrinterSettings& look);

/// Lines for a printer; where a page ends is settled by the paper. A line that is too long is broken.
struct PrintDocument {
    Text title{};
    Text heading{};  // stands on top of each page; empty for none
    std::vector<Text> lines{};
    std::vector<Chart> charts{};  // on pages of their own behind the lines
    PrinterSettings look{};
    bool isUnattended = false;  // nobody has asked for it, so that nobody is to be asked
    Text printer{};             // the spooler's name of it; empty: its default
};

/// Takes documents to paper, and never keeps its caller waiting.
class PrintOutput {
 public:
    virtual ~PrintOutput() = default;
    /// Prints at once.
    virtual void Print(const PrintDocument& document) = 0;
    /// Shows the pages first, with the choice of a printer or a file.
    virtual void Preview(const PrintDocument& document) = 0;
};

}  // namespace nordkeep
