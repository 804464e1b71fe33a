#include "pipeline/EventTexts.h"

#include "platform/FileTree.h"
#include "runtime/Fields.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextCidAlarm = 1200;
constexpr int kTextCidRestore = 1201;
constexpr int kTextCidOpening = 1202;
constexpr int kTextCidClosing = 1203;
constexpr int kTextCidReport = 1204;
constexpr int kTextGroup = 1205;
constexpr int kTextZone = 1206;
constexpr int kTextUser = 1207;

/// The SIA blocks that are looked up, with the section of the data codes and the text of their status.
struct BlockRow {
    TextView type;
    const char* section;  // none for a block without a look-up
    int statusText;
};

constexpr std::array<BlockRow, 4> kBlocks = {
    {{"N", "Event", 1049}, {"O", "Event", 1050}, {"E", "Environmental", 1051}, {"A", nullptr, 1052}}};

/// What a data code says of an event: text, reset code or class, priority.
struct DataCode {
    Text text{};
    Text kind{};
    Text prio{};
};

DataCode SplitDataCode(const Text& value) {
    return {GetField(value, 0, ";"), UpperCase(GetField(value, 1, ";")), Text(TrimBlanks(GetField(value, 2, ";")))};
}

Text ReadDataCode(const Settings& settings, const cTranslate& set, TextView section, TextView key) {
    return settings.ReadIni(section, key, key, "Settings\\" + set.m_FileName + ".DataCode");
}

void ApplyPriority(cAlarm& alarm, const Text& prio) {
    if (!prio.empty()) alarm.m_TranslatedPrio = std::to_string(LeadingInt32(prio));
}

Text Marked(const Text& text) { return text.empty() ? Text() : " ^" + text + "^"; }

/// The modifiers with their first two letters translated.
Text ModifierText(const IncomingEvent& event, const cTranslate& set, const Settings& settings) {
    Text list;
    for (const Text& item : Split(event.SIAModifier, ',')) {
        if (item.empty()) break;
        if (!list.empty()) list += ',';
        list += ReadDataCode(settings, set, "Modifiers", Substring(item, 1, 2));
        list += Substring(item, 3, static_cast<long>(item.size()));
    }
    return list + Marked(event.SIAPrefixText);
}

/// The text of a zone of this object; the address itself when nobody has given it one.
Text ZoneText(const cAlarm& alarm, const Text& address, const Settings& settings) {
    if (!IsSafeComponent(alarm.m_IdCode)) return address;
    const Text file = "Information\\SIA\\" + alarm.m_IdCode + "\\Zones.SIA";
    const Text ofType = settings.ReadIni(alarm.m_TypeCode, address, "", file);
    return ofType.empty() ? settings.ReadIni("General", address, address, file) : ofType;
}

void TranslateSIA(IntakeRun& run, const cTranslate& set, const Settings& settings, const Language& language) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    DataCode found;
    for (const BlockRow& row : kBlocks) {
        if (row.type != event.SIABlockType) continue;
        if (row.section) found = SplitDataCode(ReadDataCode(settings, set, row.section, alarm.m_TypeCode));
        alarm.m_SIAStatus = language.GetLanguageText(row.statusText);
    }
    alarm.m_TranslatedTypeCode = found.text;
    alarm.m_ResetTypeCode = TrimBlanksLeft(found.kind);
    alarm.m_SIAModifier = ModifierText(event, set, settings);
    const Text address(Substring(event.DefaultAlarmCode, 3, static_cast<long>(event.DefaultAlarmCode.size())));
    alarm.m_SIAAddress = ZoneText(alarm, address, settings) + Marked(event.SIASuffixText);
    ApplyPriority(alarm, found.prio);
}

/// The status of a Contact ID event by its class and qualifier; 0 when there is none.
int ContactIDStatusText(const Text& kind, const Text& qualifier) {
    struct Row {
        TextView kind;
        TextView qualifier;
        int text;
    };
    static constexpr std::array<Row, 9> kRows = {{{"Z", "1", kTextCidAlarm},
                                                  {"Z", "E", kTextCidAlarm},
                                                  {"Z", "3", kTextCidRestore},
                                                  {"Z", "R", kTextCidRestore},
                                                  {"Z", "6", kTextCidReport},
                                                  {"Z", "P", kTextCidReport},
                                                  {"U", "1", kTextCidOpening},
                                                  {"U", "3", kTextCidClosing},
                                                  {"U", "6", kTextCidReport}}};
    for (const Row& row : kRows) {
        if (row.kind == kind && row.qualifier == qualifier) return row.text;
    }
    return 0;
}

/// False when the data codes have nothing for this event and the type codes must serve.
bool TranslateContactID(IntakeRun& run, const cTranslate& set, const Settings& settings,
                        const Language& language) {
    cAlarm& alarm = *run.alarm;
    const auto part = [&](int start, int length) { return Text(Substring(run.code, start, length)); };
    if (set.m_TypeCode_Format_Length > 0) {
        alarm.m_TypeCode = part(set.m_TypeCode_Format_StartPos, set.m_TypeCode_Format_Length);
        alarm.m_TranslatedTypeCode = alarm.m_TypeCode;
    }
    const Text group = part(set.m_Group_Format_StartPos, set.m_Group_Format_Length);
    const Text zone = part(set.m_Zone_Format_StartPos, set.m_Zone_Format_Length);
    const Text value = ReadDataCode(settings, set, "Event", alarm.m_TypeCode);
    if (value.empty()) return false;
    const DataCode found = SplitDataCode(value);
    alarm.m_TranslatedTypeCode = found.text;
    if (found.kind == "Z" || found.kind == "U") {
        // The record's priority holds the event qualifier on these lines.
        const int status = ContactIDStatusText(found.kind, alarm.m_Prio);
        if (status != 0) alarm.m_SIAStatus = language.GetLanguageText(status);
        alarm.m_SIAAddress = language.GetLanguageText(kTextGroup) + group + "/" +
                             language.GetLanguageText(found.kind == "Z" ? kTextZone : kTextUser) + zone;
    }
    if (LeadingNumber(alarm.m_Prio) == 1) alarm.m_ResetTypeCode = "*";
    ApplyPriority(alarm, found.prio);
    return true;
}

void TranslateByTypeCodes(IntakeRun& run, cTranslate& set) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    if ((alarm.m_TypeCode.empty() || run.IsFound()) && set.m_TypeCode_Format_Length > 0) {
        const bool isSms = event.TranslationNumberToUse == kTranslateSMS && !event.Originator.empty();
        const Text& source = isSms ? event.DefaultAlarmCode : run.code;
        alarm.m_TypeCode = Substring(source, set.m_TypeCode_Format_StartPos, set.m_TypeCode_Format_Length);
    }
    if (!event.ForcedTypeCode.empty()) alarm.m_TypeCode = event.ForcedTypeCode;
    alarm.m_TranslatedTypeCode = alarm.m_TypeCode;
    const cTypeCode* type = set.FindTypeCode(alarm.m_TypeCode);
    if (!type) return;
    alarm.m_TranslatedTypeCode = type->m_Name;
    alarm.m_ResetTypeCode = type->m_ResetTypeCode;
    alarm.m_TranslatedPrio = std::to_string(type->m_Prio);
}

}  // namespace

void TranslateEventText(IntakeRun& run, cTranslate& set, const Settings& settings, const Language& language) {
    const int number = run.event.TranslationNumberToUse;
    const bool hasDataCodes = !run.IsOwn() && !run.HasGivenType();
    if (hasDataCodes && number == kTranslateSIA) return TranslateSIA(run, set, settings, language);
    if (hasDataCodes && number == kTranslateContactID && TranslateContactID(run, set, settings, language)) return;
    TranslateByTypeCodes(run, set);
}

}  // namespace nordkeep
