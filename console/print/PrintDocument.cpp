#include "console/print/PrintDocument.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kOwn = SettingScope::Workstation;
using Row = SettingRow<PrinterSettings>;

constexpr Row kRows[] = {
    {kGeneral, "Printer.FontName", "", kOwn, &PrinterSettings::FontName},
    {kGeneral, "Printer.FontBold", "0", kOwn, &PrinterSettings::FontBold},
    {kGeneral, "Printer.FontItalic", "0", kOwn, &PrinterSettings::FontItalic},
    {kGeneral, "Printer.FontSize", "0", kOwn, &PrinterSettings::FontSize, 0, 72},
    {kGeneral, "LeftMargin", "15", kOwn, &PrinterSettings::LeftMargin, 0, 150},
    {kGeneral, "TopMargin", "0", kOwn, &PrinterSettings::TopMargin, 0, 150},
    {kGeneral, "DumpPrinterFormat", "", kOwn, &PrinterSettings::DumpPrinterFormat},
    {kGeneral, "PrinterDateFormat", "Short Date", kOwn, &PrinterSettings::DateFormat},
    {kGeneral, "PrinterTimeFormat", "Long Time", kOwn, &PrinterSettings::TimeFormat},
};

}  // namespace

std::span<const SettingRow<PrinterSettings>> PrinterSettingRows() {
    return kRows;
}

}  // namespace nordkeep
