#include "store/RecordJson.h"

#include "runtime/Json.h"
#include "store/EventFolder.h"

namespace nordkeep {
namespace {

struct NamedText {
    const char* name;
    Text cAlarm::*field;
};
constexpr NamedText kTexts[] = {
    {"alarmText", &cAlarm::m_AlarmCodeToStore},
    {"alarmCode", &cAlarm::m_AlarmCode},
    {"extraText", &cAlarm::m_ExtraText},
    {"translatedPriority", &cAlarm::m_TranslatedPrio},
    {"typeName", &cAlarm::m_TranslatedTypeCode},
    {"objectName", &cAlarm::m_TranslatedIDCode},
    {"mapName", &cAlarm::m_TranslatedMapName},
    {"set", &cAlarm::m_TranslationFile},
    {"resetTypeCode", &cAlarm::m_ResetTypeCode},
    {"priority", &cAlarm::m_Prio},
    {"typeCode", &cAlarm::m_TypeCode},
    {"idCode", &cAlarm::m_IdCode},
    {"protocol", &cAlarm::m_ProtocolType},
    {"siaStatus", &cAlarm::m_SIAStatus},
    {"siaAddress", &cAlarm::m_SIAAddress},
    {"siaModifier", &cAlarm::m_SIAModifier},
    {"user", &cAlarm::m_User},
    {"comment", &cAlarm::m_SmallComment},
    {"originator", &cAlarm::m_Originator},
    {"port", &cAlarm::m_PortDescription},
    {"customer", &cAlarm::m_Customer},
    {"lineCard", &cAlarm::m_LineCardNumber},
    {"resetIdCode", &cAlarm::m_ResetIdCode},
    {"objectInformation", &cAlarm::m_ObjectInformation},
    {"rawAlarmCode", &cAlarm::m_RawAlarmCode},
    {"link", &cAlarm::m_URL},
};

struct NamedDate {
    const char* name;
    OleDate cAlarm::*field;
};
constexpr NamedDate kDates[] = {{"timeStamp", &cAlarm::m_TimeStamp},
                                {"ackedTime", &cAlarm::m_AckedTime},
                                {"arrivedTime", &cAlarm::m_ArrivedTime}};

struct NamedFlag {
    const char* name;
    bool cAlarm::*field;
};
constexpr NamedFlag kFlagsInMemory[] = {{"confirmation", &cAlarm::m_IsAConfirmationSMS},
                                        {"translated", &cAlarm::m_TranslationIsOk},
                                        {"speech", &cAlarm::m_MessageIsFollowedBySpeech}};

void AddRecord(JsonObject& json, const cAlarm& alarm) {
    json.Add("status", alarm.m_Status).Add("repeated", alarm.m_Repeated);
    json.Add("sentToTorvex", alarm.m_SentToTorvex).Add("alarmId", std::int64_t{alarm.m_AlarmId});
    for (const NamedDate& date : kDates) json.Add(date.name, (alarm.*date.field).Days());
    for (const NamedText& text : kTexts) json.Add(text.name, alarm.*text.field);
}

std::optional<cAlarm> RecordOf(const JsonMembers& members) {
    if (!members.Has("status") || !members.Has("arrivedTime")) return std::nullopt;
    cAlarm alarm;
    alarm.m_Status = static_cast<int>(members.Integer("status"));
    alarm.m_Repeated = static_cast<int>(members.Integer("repeated"));
    alarm.m_SentToTorvex = static_cast<int>(members.Integer("sentToTorvex"));
    alarm.m_AlarmId = static_cast<std::int32_t>(members.Integer("alarmId"));
    for (const NamedDate& date : kDates) alarm.*date.field = OleDate::FromDays(members.Number(date.name));
    for (const NamedText& text : kTexts) alarm.*text.field = members.String(text.name);
    return alarm;
}

}  // namespace

std::string RecordJson(const cAlarm& alarm) {
    JsonObject json;
    AddRecord(json, alarm);
    return json.Take();
}

std::optional<cAlarm> ReadRecordJson(std::string_view json) {
    const std::optional<JsonMembers> members = ReadJsonObject(json);
    return members ? RecordOf(*members) : std::nullopt;
}

std::string WaitingRecordJson(const cAlarm& alarm, TextView what) {
    JsonObject json;
    json.Add("what", what);
    AddRecord(json, alarm);
    json.Add("translation", alarm.m_TranslationNumberToUse).Add("zeroTrim", alarm.m_ZeroTrim);
    json.Add("dataCode", alarm.m_SIADataCode).Add("portName", alarm.m_PortName);
    for (const NamedFlag& flag : kFlagsInMemory) json.Add(flag.name, int{alarm.*flag.field});
    return json.Take();
}

std::optional<cAlarm> ReadWaitingRecordJson(std::string_view json, TextView what) {
    const std::optional<JsonMembers> members = ReadJsonObject(json);
    if (!members || members->String("what") != what) return std::nullopt;
    std::optional<cAlarm> alarm = RecordOf(*members);
    if (!alarm) return std::nullopt;
    alarm->m_TranslationNumberToUse = static_cast<int>(members->Integer("translation"));
    alarm->m_ZeroTrim = static_cast<int>(members->Integer("zeroTrim"));
    alarm->m_SIADataCode = members->String("dataCode");
    alarm->m_PortName = members->String("portName");
    for (const NamedFlag& flag : kFlagsInMemory) (*alarm).*flag.field = members->Integer(flag.name) != 0;
    return alarm;
}

JournalEntry EntryOf(JournalKind kind, const cAlarm& alarm) {
    return {.kind = kind,
            .event = EventPointerOf(alarm.m_FilePointer),
            .status = alarm.m_Status,
            .priority = alarm.m_TranslatedPrio,
            .object = alarm.m_IdCode,
            .type = alarm.m_TypeCode,
            .port = alarm.m_PortName,
            .text = alarm.m_AlarmCodeToStore,
            .data = RecordJson(alarm)};
}

}  // namespace nordkeep
