#include "console/PrintDocument.h"

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

bool SavePrinterFont(Settings& files, const PrinterSettings& settings) {
    const auto save = [&files](const char* key, const Text& value) {
        return files.WriteIni(kGeneral, key, value);
    };
    const bool isNameSaved = save("Printer.FontName", settings.FontName);
    const bool isSizeSaved = save("Printer.FontSize", std::to_string(settings.FontSize));
    const bool isBoldSaved = save("Printer.FontBold", settings.FontBold ? "1" : "0");
    const bool isItalicSaved = save("Printer.FontItalic", settings.FontItalic ? "1" : "0");
    return isNameSaved && isSizeSaved && isBoldSaved && isItalicSaved;
}

}  // namespace nordkeep
