#include "console/lists/AlarmCells.h"

#include "console/lists/SharedCaptions.h"
#include "runtime/Dates.h"
#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextRepeated = 3424;
// Of an object's file a cell shows the beginning.
constexpr std::size_t kMostOfAFile = 2000;

int FieldOf(TextView name) {
    return AlarmFieldNumber(name).value_or(-1);
}

/// The fields that are not simply their placeholder.
struct SpecialFields {
    int status = FieldOf("STATUS");
    int repeated = FieldOf("REPEATED");
    int objectComments = FieldOf("OBJECTCOMMENTS");
    int typeInstruction = FieldOf("OBJECTSPECIFICTYPECODE");

    bool IsFromFile(int field) const { return field == objectComments || field == typeInstruction; }
};
const SpecialFields& Special() {
    static const SpecialFields kFields;
    return kFields;
}

struct TimeField {
    const char* name;
    OleDate cAlarm::*time;
};
constexpr TimeField kTimeFields[] = {
    {"DATE", &cAlarm::m_TimeStamp},          {"TIME", &cAlarm::m_TimeStamp},
    {"DATETIME", &cAlarm::m_TimeStamp},      {"ACKDATE", &cAlarm::m_AckedTime},
    {"ACKTIME", &cAlarm::m_AckedTime},       {"ACKDATETIME", &cAlarm::m_AckedTime},
    {"ARRIVEDDATE", &cAlarm::m_ArrivedTime}, {"ARRIVEDTIME", &cAlarm::m_ArrivedTime},
};

const TimeField* TimeFieldOf(int field) {
    static const auto kByNumber = [] {
        std::array<const TimeField*, kAlarmFieldCount> table{};
        for (const TimeField& row : kTimeFields) {
            const int number = FieldOf(row.name);
            if (number >= 0) table[static_cast<std::size_t>(number)] = &row;
        }
        return table;
    }();
    return field >= 0 && field < kAlarmFieldCount ? kByNumber[static_cast<std::size_t>(field)] : nullptr;
}

/// Eight bytes that sort as the time does.
Text TimeKey(std::int64_t milliseconds) {
    const auto bits = static_cast<std::uint64_t>(milliseconds) ^ (std::uint64_t{1} << 63);
    Text key(8, '\0');
    for (std::size_t i = 0; i < 8; ++i) key[i] = static_cast<char>((bits >> (56 - 8 * i)) & 0xFF);
    return key;
}

Text Placeholder(int field) {
    return "[" + Text(AlarmFieldName(field)) + "]";
}

}  // namespace

Text AlarmCells::Build(TextView format, const cAlarm& alarm) const {
    return store_.Texts().BuildAlarmText({format, formats_.date, formats_.time}, alarm,
                                         HeaderMode::StoredValues);
}

Text AlarmCells::StatusWord(int status) const {
    const bool isKnown = status >= kStatusNew && status <= kStatusAcknowledged;
    return captions_(kCaptionFirstStatus + (isKnown ? status : 0));
}

Text AlarmCells::Heading(int field) const {
    return captions_.FromFile(AlarmFieldHeading(field));
}

Text AlarmCells::FileCell(const cAlarm& alarm, int field) const {
    return fromFiles_.Get(alarm.m_FilePointer, field,
                          [&] { return Build(Placeholder(field), alarm).substr(0, kMostOfAFile); });
}

Text AlarmCells::PlainCell(const cAlarm& alarm, int field) const {
    if (const TimeField* time = TimeFieldOf(field); time && (alarm.*time->time).IsNever()) return {};
    if (field == Special().status && !formats_.isStatusNumber) return StatusWord(alarm.m_Status);
    if (field == Special().repeated) return alarm.m_Repeated != 0 ? captions_(kTextRepeated) : Text();
    if (Special().IsFromFile(field)) return FileCell(alarm, field);
    return Build(Placeholder(field), alarm);
}

Text AlarmCells::Cell(const cAlarm& alarm, int field) const {
    return Printable(PlainCell(alarm, field));
}

int AlarmCells::DateFieldOf(int field) {
    static const std::array<std::pair<int, int>, 3> kPairs = {
        {{FieldOf("TIME"), FieldOf("DATE")},
         {FieldOf("ACKTIME"), FieldOf("ACKDATE")},
         {FieldOf("ARRIVEDTIME"), FieldOf("ARRIVEDDATE")}}};
    for (const auto& [time, date] : kPairs) {
        if (time == field && time >= 0) return date;
    }
    return -1;
}

Text AlarmCells::CellWithoutDate(const cAlarm& alarm, int field) const {
    const TimeField* time = TimeFieldOf(field);
    Text cell = Cell(alarm, field);
    if (!formats_.clock || !time || cell.empty()) return cell;
    const bool isToday = (alarm.*time->time).Midnight() == formats_.clock->Now().Midnight();
    return isToday ? cell : Cell(alarm, DateFieldOf(field)) + " " + cell;
}

Text AlarmCells::SortKey(const cAlarm& alarm, int field) const {
    if (const TimeField* time = TimeFieldOf(field)) return TimeKey((alarm.*time->time).Milliseconds());
    return CollationKey(PlainCell(alarm, field));
}

Text AlarmCells::SearchText(const cAlarm& alarm, const std::vector<int>& fields) const {
    Text all;
    for (const int field : fields) {
        if (!Special().IsFromFile(field)) all.append(PlainCell(alarm, field)).append(1, '\n');
    }
    return UpperCase(TextView(all));
}

Text AlarmCells::ToolTip(const cAlarm& alarm) const {
    const Text& code = alarm.m_TypeCode.empty() ? alarm.m_SIAStatus : alarm.m_TypeCode;
    const OleDate time = alarm.m_TimeStamp.IsNever() ? alarm.m_ArrivedTime : alarm.m_TimeStamp;
    const std::vector<Text> lines[] = {
        {alarm.m_TranslatedIDCode, alarm.m_IdCode, alarm.m_Customer},
        {alarm.m_TranslatedPrio, alarm.m_TranslatedTypeCode, code},
        {alarm.m_AlarmCodeToStore},
        {FormatDate(time, formats_.date) + " " + FormatDate(time, formats_.time), StatusWord(alarm.m_Status),
         alarm.m_User},
        {alarm.m_SmallComment}};
    Text tip;
    for (const std::vector<Text>& parts : lines) {
        Text line;
        for (const Text& part : parts) {
            const TextView shown = TrimBlanks(part);
            if (!shown.empty()) line.append(line.empty() ? "" : "   ").append(shown);
        }
        if (!line.empty()) tip.append(tip.empty() ? "" : "\n").append(Printable(line));
    }
    return tip;
}

}  // namespace nordkeep
