#include "console/print/AlarmPrinting.h"

#include "console/lists/SharedCaptions.h"
#include "pipeline/DispatchSettings.h"
#include "runtime/Dates.h"
#include "store/TextTemplate.h"

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr int kCaptionOldAlarms = 3001;
constexpr const char* kSection = "AlarmPagePrinter";
constexpr TextView kDefaultLine =
    "[NUMBER::4] [DATE] [TIME] [TRPRIO::3] [TRIDCODE::28] [TRTYPECODE::28] [ALARMCODETOSTORE]";
constexpr TextView kRowNumber = "[NUMBER";
constexpr SettingRow<AlarmPageSettings> kRows[] = {
    {kSection, "PrioToPrint", SettingScope::Workstation, &AlarmPageSettings::PrioToPrint},
    {kSection, "StatusToPrint", SettingScope::Workstation, &AlarmPageSettings::StatusToPrint},
    {kSection, "Printer", SettingScope::Workstation, &AlarmPageSettings::Printer},
    {kGeneral, "PrintLastDayUnackedAutomatically", SettingScope::Workstation,
     &AlarmPageSettings::PrintLastDayUnackedAutomatically},
    {kGeneral, "PrintLastDayAckedAutomatically", SettingScope::Workstation,
     &AlarmPageSettings::PrintLastDayAckedAutomatically},
};

/// A heading is shorter than the dates below it, unless the format gives it a width.
Text WithWidth(TextView format, TextView place, TextView picture) {
    const std::size_t width = FormatDate(OleDate::FromCivil({2000, 12, 31, 23, 59, 59}), picture).size();
    const Text wide = Text(place.substr(0, place.size() - 1)) + "::" + std::to_string(width) + "]";
    return ReplaceAll(format, place, wide);
}

}  // namespace

std::span<const SettingRow<AlarmPageSettings>> AlarmPageSettingRows() {
    return kRows;
}

Text FillRowNumber(TextView format, std::size_t number) {
    Text filled;
    std::size_t at = 0;
    for (;;) {
        const std::size_t found = FindNoCase(format, kRowNumber, at);
        const std::size_t end = found == Text::npos ? Text::npos : format.find(']', found);
        if (end == Text::npos) return filled.append(format.substr(at));
        const char behind = format[found + kRowNumber.size()];
        const bool isName = behind == ']' || behind == ':';
        const TextView place = format.substr(found, end + 1 - found);
        filled.append(format.substr(at, found - at));
        filled += isName ? ExpandTemplate(place, [number](TextView) { return std::to_string(number); })
                         : Text(place);
        at = end + 1;
    }
}

PrintDocument AlarmPrinting::RowsDocument(const Text& title,
                                          std::span<const std::int32_t> filePointers) const {
    const PrinterSettings& look = needs_.settings;
    const Text line = look.DumpPrinterFormat.empty() ? Text(kDefaultLine) : look.DumpPrinterFormat;
    const AlarmText& texts = needs_.store.Texts();
    PrintDocument document{.title = title, .look = look};
    const Text headings =
        WithWidth(WithWidth(line, "[DATE]", look.PrinterDateFormat), "[TIME]", look.PrinterTimeFormat);
    document.heading = texts.BuildAlarmText({headings, look.PrinterDateFormat, look.PrinterTimeFormat},
                                            cAlarm(), HeaderMode::Headings);
    for (const std::int32_t key : filePointers) {
        const cAlarm* alarm = needs_.store.FindAlarmByKey(key);
        if (!alarm) continue;
        const Text numbered = FillRowNumber(line, document.lines.size() + 1);
        document.lines.push_back(
            texts.BuildAlarmText({numbered, look.PrinterDateFormat, look.PrinterTimeFormat}, *alarm));
    }
    return document;
}

void AlarmPrinting::PrintRows(const Text& title, std::span<const std::int32_t> filePointers) {
    needs_.output.Preview(RowsDocument(title, filePointers));
}

bool AlarmPrinting::IsToBePrinted(const cAlarm& alarm) const {
    const AlarmPageSettings& settings = needs_.pageSettings;
    if (settings.PrioToPrint.empty() || settings.StatusToPrint.empty()) return false;
    const std::vector<Text> statuses = Split(settings.StatusToPrint, ',');
    const bool isStatus = std::ranges::any_of(statuses, [&](const Text& text) {
        return IsNumeric(TrimBlanks(text)) && LeadingInt32(text) == alarm.m_Status;
    });
    return isStatus && ParsePriorityRange(settings.PrioToPrint).Holds(LeadingInt32(alarm.m_TranslatedPrio));
}

void AlarmPrinting::PrintAlarmPage(const cAlarm& alarm) {
    if (!IsToBePrinted(alarm)) return;
    const PrinterSettings& look = needs_.settings;
    PrintDocument document{
        .title = alarm.m_TranslatedIDCode.empty() ? alarm.m_IdCode : alarm.m_TranslatedIDCode,
        .look = look,
        .isUnattended = true,
        .printer = needs_.pageSettings.Printer};
    for (int field = 0; field < kAlarmFieldCount; ++field) {
        const Text place = "[" + Text(AlarmFieldName(field)) + "]";
        const Text value = needs_.store.Texts().BuildAlarmText(
            {place, look.PrinterDateFormat, look.PrinterTimeFormat}, alarm);
        if (TrimBlanks(value).empty()) continue;
        document.lines.push_back(FitWidth(needs_.captions.FromFile(AlarmFieldHeading(field)), 24) + " " +
                                 value);
    }
    needs_.output.Print(document);
}

void AlarmPrinting::PrintDay(OleDate day) {
    if (needs_.pageSettings.PrintLastDayUnackedAutomatically) PrintDay(day, kCaptionFirstTab, false);
    if (needs_.pageSettings.PrintLastDayAckedAutomatically) PrintDay(day, kCaptionOldAlarms, true);
}

void AlarmPrinting::PrintDay(OleDate day, int listCaption, bool isOfOldAlarms) {
    std::vector<std::int32_t> keys;
    const EventList& events = needs_.store.Events();
    for (EventSequence at = events.Next(0); at != 0; at = events.Next(at)) {
        const cAlarm& alarm = *events.Find(at);
        const bool isInList = isOfOldAlarms ? alarm.m_Status == kStatusAcknowledged : IsUnacknowledged(alarm);
        if (isInList && alarm.m_ArrivedTime.Midnight() == day.Midnight()) keys.push_back(alarm.m_FilePointer);
    }
    const Text title = needs_.captions(listCaption) + " " + FormatDate(day, "Short Date");
    if (keys.empty()) return;
    PrintDocument document = RowsDocument(title, keys);
    document.isUnattended = true;
    document.printer = needs_.pageSettings.Printer;
    needs_.output.Print(document);
}

}  // namespace nordkeep
