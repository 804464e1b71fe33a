#include "ports/FieldMap.h"

#include "pipeline/EventPort.h"
#include "ports/formats/XmlText.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "store/Alarm.h"
#include "store/TextTemplate.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kParseTime = "ParseTimeStampFromXML";
constexpr const char* kTime = "TransmitterTime";

struct FieldRow {
    const char* key;
    Text cAlarm::*field;
};

constexpr std::array<FieldRow, 16> kFields = {{{"Prio", &cAlarm::m_Prio},
                                               {"TypeCode", &cAlarm::m_TypeCode},
                                               {"IdCode", &cAlarm::m_IdCode},
                                               {"AlarmCode", &cAlarm::m_AlarmCode},
                                               {"AlarmCodeToStore", &cAlarm::m_AlarmCodeToStore},
                                               {"ExtraText", &cAlarm::m_ExtraText},
                                               {"TranslatedPrio", &cAlarm::m_TranslatedPrio},
                                               {"TranslatedTypeCode", &cAlarm::m_TranslatedTypeCode},
                                               {"TranslatedIDCode", &cAlarm::m_TranslatedIDCode},
                                               {"SIAStatus", &cAlarm::m_SIAStatus},
                                               {"SIAAddress", &cAlarm::m_SIAAddress},
                                               {"SIAModifier", &cAlarm::m_SIAModifier},
                                               {"Originator", &cAlarm::m_Originator},
                                               {"User", &cAlarm::m_User},
                                               {"Customer", &cAlarm::m_Customer},
                                               {"LineCardNumber", &cAlarm::m_LineCardNumber}}};

bool IsCharacterCode(TextView name) {
    const std::int64_t code = IsNumeric(name) ? LeadingNumber(name) : 0;
    return code >= 1 && code <= 255;
}

/// The element of this name; an unknown one is empty, unless its name is the code of a character.
std::optional<Text> ElementValue(TextView document, TextView name) {
    const auto element = FindXmlElement(document, name, XmlNames::IgnoreCase);
    if (element) return Text(element->inner);
    return IsCharacterCode(name) ? std::nullopt : std::optional<Text>("");
}

Text Expand(TextView format, TextView document) {
    return ExpandTemplate(format, [document](TextView name) { return ElementValue(document, name); });
}

}  // namespace

std::vector<TextView> FieldMapKeys() {
    std::vector<TextView> keys = {kParseTime, kTime};
    for (const FieldRow& row : kFields) keys.emplace_back(row.key);
    return keys;
}

void FieldMap::ApplyXmlFieldMap(const EventPort& port, cAlarm& alarm, TextView section, TextView document) {
    const auto read = [&](const char* key) { return files_.ReadPortIni(section, key, "", port.PortName); };
    const Text timeFormat = IsTrue(read(kParseTime)) ? read(kTime) : Text();
    if (const auto time = ParseDateTime(Expand(timeFormat, document))) alarm.m_TimeStamp = *time;
    for (const FieldRow& row : kFields) {
        const Text format = read(row.key);
        if (!format.empty()) alarm.*row.field = Expand(format, document);
    }
}

}  // namespace nordkeep
