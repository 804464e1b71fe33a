#include "store/TemplateCheck.h"

#include "runtime/Fields.h"
#include "store/AlarmText.h"
#include "store/TextTemplate.h"

namespace nordkeep {
namespace {

constexpr int kTextUnknownField = 3794;
constexpr int kTextBehindEmpty = 3830;

struct TemplateKey {
    const char* section;
    const char* key;
};
constexpr TemplateKey kTemplates[] = {
    {"General", "AlarmFileFormat"},
    {"General", "AlarmLogFileFileFormat"},
    {"General", "AlarmLogFileCyclicWriteString"},
    {"General", "ArchiveLogFileTimeFormat"},
    {"General", "ObjectLogFileFormat"},
    {"General", "ContinousPrinterFormat"},
    {"General", "DumpPrinterFormat"},
    {"General", "UnackedStatusBarFormat"},
    {"General", "AckedStatusBarFormat"},
    {"General", "TorvexCyclicWriteString"},
    {"General", "MSMQLabel"},
    {"General", "MSMQBody"},
    {"Torvex", "Format"},
    {"ComCall", "Format"},
};

std::vector<TextView> FieldNames() {
    std::vector<TextView> names;
    for (int number = 0; number < kAlarmFieldCount; ++number) names.push_back(AlarmFieldName(number));
    return names;
}

void UnknownField(int line, TextView name, FileFindings& findings) {
    findings.UnknownWord(line, kTextUnknownField, {name}, NearestWord(name, FieldNames()));
}

}  // namespace

void CheckTemplates(const IniLines& main, FileFindings& findings) {
    for (const auto& [section, key] : kTemplates) {
        const IniLines::Entry* entry = main.Find(section, key);
        if (!entry) continue;
        // What is neither a field nor a command nor a character is asked for and left as it stands.
        ExpandTemplate(entry->value, [&](TextView name) -> std::optional<Text> {
            const bool isCode = IsNumeric(name) && LeadingNumber(name) >= 1 && LeadingNumber(name) <= 255;
            if (!AlarmFieldNumber(name) && !isCode) UnknownField(entry->line, name, findings);
            return std::nullopt;
        });
    }
}

void CheckColumns(const IniLines& main, TextView section, FileFindings& findings) {
    const IniLines::Entry* entry = main.Find(section, "Columns");
    if (!entry) return;
    bool isOver = false;
    for (const Text& piece : Split(entry->value, ',')) {
        const TextView name = TrimBlanksAndTabs(piece);
        if (isOver && !name.empty()) return findings.Error(entry->line, kTextBehindEmpty);
        isOver = isOver || name.empty();
        if (!isOver && !AlarmFieldNumber(name)) UnknownField(entry->line, name, findings);
    }
}

}  // namespace nordkeep
