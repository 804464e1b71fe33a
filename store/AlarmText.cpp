#include "store/AlarmText.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "runtime/ObjectFiles.h"
#include "runtime/TrafficLog.h"
#include "store/TextTemplate.h"

#include <array>
#include <cstdlib>
#include <unordered_map>
#include <variant>

namespace nordkeep {
namespace {

/// What a field's value is made from.
struct Source {
    const AlarmFormat& format;
    const cAlarm& alarm;
    const FileTree& dataFolder;
};

using Made = Text (*)(const Source&);

struct Field {
    TextView name;
    int heading;
    std::variant<Text cAlarm::*, std::int32_t cAlarm::*, Made> value;
};

Text DateOf(const Source& s, OleDate date) {
    return FormatDate(date, s.format.date);
}
Text TimeOf(const Source& s, OleDate date) {
    return FormatDate(date, s.format.time);
}
Text DateTimeOf(const Source& s, OleDate date) {
    return DateOf(s, date) + " " + TimeOf(s, date);
}

/// The lines of a file, joined by a backslash and an n.
Text InformationText(const Source& s, const Text& file) {
    if (file.empty()) return {};
    const std::optional<Text> content = ReadFile(s.dataFolder.Resolve(file));
    if (!content) return {};
    Text joined;
    bool isFirst = true;
    for (const TextView line : Lines(*content)) {
        if (!isFirst) joined += "\\n";
        joined += line;
        isFirst = false;
    }
    return joined;
}

Text ObjectComments(const Source& s) {
    return InformationText(s, InformationFile(s.alarm.m_TranslationFile, s.alarm.m_IdCode));
}

Text ObjectSpecificTypeCode(const Source& s) {
    return InformationText(
        s, TypeInformationFile(s.alarm.m_TranslationFile, s.alarm.m_IdCode, s.alarm.m_TypeCode));
}

Text TorvexStatus(const Source& s) {
    return IsActive(s.alarm) || s.alarm.m_Status == kStatusRemoved ? "1" : "0";
}

constexpr std::array<Field, kAlarmFieldCount> kFields = {{
    {"STATUS", 910, &cAlarm::m_Status},
    {"REPEATED", 911, &cAlarm::m_Repeated},
    {"DATE", 912, [](const Source& s) { return DateOf(s, s.alarm.m_TimeStamp); }},
    {"TIME", 913, [](const Source& s) { return TimeOf(s, s.alarm.m_TimeStamp); }},
    {"ACKDATE", 914, [](const Source& s) { return DateOf(s, s.alarm.m_AckedTime); }},
    {"ACKTIME", 915, [](const Source& s) { return TimeOf(s, s.alarm.m_AckedTime); }},
    {"PROTOCOLTYPE", 916, &cAlarm::m_ProtocolType},
    {"PRIO", 917, &cAlarm::m_Prio},
    {"IDCODE", 918, &cAlarm::m_IdCode},
    {"TYPECODE", 919, &cAlarm::m_TypeCode},
    {"ALARMCODE", 920, &cAlarm::m_AlarmCode},
    {"ALARMCODETOSTORE", 921, &cAlarm::m_AlarmCodeToStore},
    {"EXTRATEXT", 922, &cAlarm::m_ExtraText},
    {"TRPRIO", 923, &cAlarm::m_TranslatedPrio},
    {"TRTYPECODE", 924, &cAlarm::m_TranslatedTypeCode},
    {"TRIDCODE", 925, &cAlarm::m_TranslatedIDCode},
    {"TRMAPNAME", 926, &cAlarm::m_TranslatedMapName},
    {"TRFILE", 927, &cAlarm::m_TranslationFile},
    {"RSTTYPECODE", 928, &cAlarm::m_ResetTypeCode},
    {"FILEPOINTER", 929, &cAlarm::m_FilePointer},
    {"SIASTATUS", 930, &cAlarm::m_SIAStatus},
    {"SIAADDRESS", 931, &cAlarm::m_SIAAddress},
    {"SIAMODIFIER", 932, &cAlarm::m_SIAModifier},
    {"USER", 933, &cAlarm::m_User},
    {"SENTTOTORVEX", 934, [](const Source& s) { return std::to_string(std::abs(s.alarm.m_SentToTorvex)); }},
    {"ARRIVEDDATE", 935, [](const Source& s) { return DateOf(s, s.alarm.m_ArrivedTime); }},
    {"ARRIVEDTIME", 936, [](const Source& s) { return TimeOf(s, s.alarm.m_ArrivedTime); }},
    {"SMALLCOMMENT", 937, &cAlarm::m_SmallComment},
    {"ORIGINATOR", 938, &cAlarm::m_Originator},
    {"NUMBER", 939, [](const Source&) { return Text(); }},  // filled in by printed lists
    {"PORTDESCRIPTION", 940, &cAlarm::m_PortDescription},
    {"OBJECTCOMMENTS", 941, ObjectComments},
    {"CUSTOMER", 942, &cAlarm::m_Customer},
    {"LINECARDNUMBER", 980, &cAlarm::m_LineCardNumber},
    {"OBJECTSPECIFICTYPECODE", 981, ObjectSpecificTypeCode},
    {"ALARMID", 982, &cAlarm::m_AlarmId},
    {"DATETIME", 983, [](const Source& s) { return DateTimeOf(s, s.alarm.m_TimeStamp); }},
    {"ACKDATETIME", 984, [](const Source& s) { return DateTimeOf(s, s.alarm.m_AckedTime); }},
    {"RSTIDCODE", 985, &cAlarm::m_ResetIdCode},
    {"OBJECTINFORMATION", 986, &cAlarm::m_ObjectInformation},
    {"RAWALARMCODE", 987, &cAlarm::m_RawAlarmCode},
    {"TORVEXSTATUS", 988, TorvexStatus},
    {"URL", 989, &cAlarm::m_URL},
}};

const std::unordered_map<TextView, int>& NumbersByName() {
    static const std::unordered_map<TextView, int> numbers = [] {
        std::unordered_map<TextView, int> made;
        for (int i = 0; i < kAlarmFieldCount; ++i) made.emplace(AlarmFieldName(i), i);
        return made;
    }();
    return numbers;
}

const Field& FieldAt(int number) {
    return kFields[static_cast<std::size_t>(number)];
}

Text ValueOf(const Field& field, const Source& source, HeaderMode mode) {
    if (const auto* text = std::get_if<Text cAlarm::*>(&field.value)) {
        const Text& value = source.alarm.**text;
        // What operators have written may have several lines.
        const bool isAsStored = mode == HeaderMode::StoredValues || *text == &cAlarm::m_SmallComment;
        return isAsStored ? value : PlainLine(value);
    }
    if (const auto* number = std::get_if<int cAlarm::*>(&field.value))
        return std::to_string(source.alarm.**number);
    return std::get<Made>(field.value)(source);
}

}  // namespace

Text AlarmText::BuildAlarmText(const AlarmFormat& format, const cAlarm& alarm, HeaderMode mode) const {
    const Source source{format, alarm, dataFolder_};
    return ExpandTemplate(format.text, [&](TextView name) -> std::optional<Text> {
        const std::optional<int> number = AlarmFieldNumber(name);
        if (!number) return std::nullopt;
        if (mode == HeaderMode::Headings) return language_.GetLanguageText(AlarmFieldHeading(*number));
        return ValueOf(FieldAt(*number), source, mode);
    });
}

cAlarm BlankAlarm(OleDate now) {
    cAlarm alarm;
    alarm.m_TimeStamp = now;
    alarm.m_ArrivedTime = now;
    return alarm;
}

std::optional<int> AlarmFieldNumber(TextView name) {
    const auto found = NumbersByName().find(UpperCase(name));
    if (found == NumbersByName().end()) return std::nullopt;
    return found->second;
}

TextView AlarmFieldName(int number) {
    return FieldAt(number).name;
}

int AlarmFieldHeading(int number) {
    return FieldAt(number).heading;
}

Text DefaultColumns() {
    Text names;
    for (const Field& field : kFields) names.append(names.empty() ? "" : ",").append(field.name);
    return names;
}

std::vector<int> ParseColumns(TextView columns) {
    std::vector<int> numbers;
    const std::vector<Text> names = Split(columns, ',');
    for (std::size_t i = 0; i < names.size() && i < kAlarmFieldCount && !names[i].empty(); ++i) {
        if (const std::optional<int> number = AlarmFieldNumber(names[i])) numbers.push_back(*number);
    }
    return numbers;
}

}  // namespace nordkeep
