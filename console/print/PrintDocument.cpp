#include "console/print/PrintDocument.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kOwn = SettingScope::Workstation;
using Row = SettingRow<PrinterSettings>;

constexpr const char* kFontName = "Printer.FontName";
constexpr const char* kFontBold = "Printer.FontBold";
constexpr const char* kFontItalic = "Printer.FontItalic";
constexpr const char* kFontSize = "Printer.FontSize";

constexpr Row kRows[] = {
    {kGeneral, kFontName, kOwn, &PrinterSettings::FontName},
    {kGeneral, kFontBold, kOwn, &PrinterSettings::FontBold},
    {kGeneral, kFontItalic, kOwn, &PrinterSettings::FontItalic},
    {kGeneral, kFontSize, kOwn, &PrinterSettings::FontSize, 0, 72},
    {kGeneral, "LeftMargin", kOwn, &PrinterSettings::LeftMargin, 0, 150},
    {kGeneral, "TopMargin", kOwn, &PrinterSettings::TopMargin, 0, 150},
    {kGeneral, "DumpPrinterFormat", kOwn, &PrinterSettings::DumpPrinterFormat},
    kPrinterDateRow<PrinterSettings>,
    kPrinterTimeRow<PrinterSettings>,
};

}  // namespace

std::span<const SettingRow<PrinterSettings>> PrinterSettingRows() {
    return kRows;
}

void SavePrinterFont(Settings& files, const PrinterSettings& look) {
    files.WriteIni(kGeneral, kFontName, look.FontName);
    files.WriteIni(kGeneral, kFontSize, std::to_string(look.FontSize));
    files.WriteIni(kGeneral, kFontBold, look.FontBold ? "1" : "0");
    files.WriteIni(kGeneral, kFontItalic, look.FontItalic ? "1" : "0");
}

}  // namespace nordkeep
