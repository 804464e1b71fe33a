#include "pipeline/EventTexts.h"

#include "runtime/Fields.h"
#include "translation/DataCodes.h"
#include "translation/ObjectLookup.h"

#include <algorithm>
#include <array>
#include <optional>

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

/// The SIA blocks, with where their codes are explained and the text of their status.
struct BlockRow {
    TextView type;
    std::optional<DataCodeSection> section;
    int statusText;
};

constexpr std::array<BlockRow, 4> kBlocks = {{{"N", DataCodeSection::Event, 1049},
                                              {"O", DataCodeSection::Event, 1050},
                                              {"E", DataCodeSection::Environmental, 1051},
                                              {"A", std::nullopt, 1052}}};

void ApplyPriority(cAlarm& alarm, const Text& prio) {
    if (!prio.empty()) alarm.m_TranslatedPrio = std::to_string(LeadingInt32(prio));
}

Text Marked(const Text& text) {
    return text.empty() ? Text() : " ^" + text + "^";
}

void TranslateSIA(IntakeRun& run, const cTranslate& set, const Settings& settings, const Language& language) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    DataCode found;
    for (const BlockRow& row : kBlocks) {
        if (row.type != event.SIABlockType) continue;
        if (row.section)
            found = FindDataCode(settings, set, *row.section, alarm.m_TypeCode).value_or(DataCode());
        alarm.m_SIAStatus = language.GetLanguageText(row.statusText);
    }
    alarm.m_TranslatedTypeCode = found.name;
    alarm.m_ResetTypeCode = TrimBlanksLeft(found.resetOrClass);
    alarm.m_SIAModifier = ReadableModifiers(settings, set, event.SIAModifier) + Marked(event.SIAPrefixText);
    const TextView address =
        TextView(event.DefaultAlarmCode).substr(std::min<std::size_t>(2, event.DefaultAlarmCode.size()));
    alarm.m_SIAAddress =
        ZoneText(settings, alarm.m_IdCode, alarm.m_TypeCode, address) + Marked(event.SIASuffixText);
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
    const auto found = FindDataCode(settings, set, DataCodeSection::Event, alarm.m_TypeCode);
    if (!found) return false;
    alarm.m_TranslatedTypeCode = found->name;
    const Text& kind = found->resetOrClass;
    if (kind == "Z" || kind == "U") {
        // The record's priority holds the event qualifier on these lines.
        const int status = ContactIDStatusText(kind, alarm.m_Prio);
        if (status != 0) alarm.m_SIAStatus = language.GetLanguageText(status);
        alarm.m_SIAAddress = language.GetLanguageText(kTextGroup) + group + "/" +
                             language.GetLanguageText(kind == "Z" ? kTextZone : kTextUser) + zone;
    }
    if (LeadingNumber(alarm.m_Prio) == 1) alarm.m_ResetTypeCode = "*";
    ApplyPriority(alarm, found->prio);
    return true;
}

void TranslateByTypeCodes(IntakeRun& run, const cTranslate& set) {
    const IncomingEvent& event = run.event;
    cAlarm& alarm = *run.alarm;
    if ((alarm.m_TypeCode.empty() || run.IsFound()) && set.m_TypeCode_Format_Length > 0) {
        const bool isSms = event.TranslationNumberToUse == Protocol::SMS && !event.Originator.empty();
        const Text& source = isSms ? event.DefaultAlarmCode : run.code;
        alarm.m_TypeCode = Substring(source, set.m_TypeCode_Format_StartPos, set.m_TypeCode_Format_Length);
    }
    if (!event.ForcedTypeCode.empty()) alarm.m_TypeCode = event.ForcedTypeCode;
    alarm.m_TranslatedTypeCode = alarm.m_TypeCode;
    const cTypeCode* type = FindTypeCode(set, alarm.m_TypeCode);
    if (!type) return;
    alarm.m_TranslatedTypeCode = type->m_Name;
    alarm.m_ResetTypeCode = type->m_ResetTypeCode;
    alarm.m_TranslatedPrio = std::to_string(type->m_Prio);
}

}  // namespace

void TranslateEventText(IntakeRun& run, const cTranslate& set, const Settings& settings,
                        const Language& language) {
    const Protocol protocol = run.event.TranslationNumberToUse;
    const bool hasDataCodes = !run.IsOwn() && !run.HasGivenType();
    if (hasDataCodes && protocol == Protocol::SIA) return TranslateSIA(run, set, settings, language);
    if (hasDataCodes && protocol == Protocol::ContactID && TranslateContactID(run, set, settings, language))
        return;
    TranslateByTypeCodes(run, set);
}

}  // namespace nordkeep
