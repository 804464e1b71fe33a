#include "console/print/PrintDocument.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr SettingScope kOwn = SettingScope::Workstation;
using Row = SettingRow<PrinterSettings>;

constexpr Row kRows[] = {
    {kGeneral, "Printer.FontName", kOwn, &PrinterSettings::FontName},
    {kGeneral, "Printer.FontBold", kOwn, &PrinterSettings::FontBold},
    {kGeneral, "Printer.FontItalic", kOwn, &PrinterSettings::FontItalic},
    {kGeneral, "Printer.FontSize", kOwn, &PrinterSettings::FontSize, 0, 72},
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

}  // namespace nordkeep
