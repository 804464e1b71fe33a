#include "translation/IdCodeFile.h"

#include "runtime/Fields.h"
#include "translation/SetRows.h"

#include <array>

namespace nordkeep {
namespace {

constexpr TextView kFormat = "FORMAT=";
constexpr TextView kPadding = "PADDING=";
constexpr TextView kZeroTrim = "ZEROTRIM=";
constexpr int kLowestCharacter = 1;
constexpr int kHighestCharacter = 255;

int NumberAt(TextView list, std::size_t number) {
    return LeadingInt16(GetField(list, number, ","));
}

void CorrectPair(int& start, int& length) {
    if (length <= 0) length = 0;
    if (start <= 0) start = 1;
}

void ReadFormat(TextView list, TelegramFormat& f) {
    const std::array pairs = {
        std::pair{&f.m_IdCode_Format_StartPos, &f.m_IdCode_Format_Length},
        std::pair{&f.m_Prio_Format_StartPos, &f.m_Prio_Format_Length},
        std::pair{&f.m_TypeCode_Format_StartPos, &f.m_TypeCode_Format_Length},
        std::pair{&f.m_Group_Format_StartPos, &f.m_Group_Format_Length},
    };
    std::size_t number = 0;
    for (const auto& [start, length] : pairs) {
        *start = NumberAt(list, number++);
        *length = NumberAt(list, number++);
        CorrectPair(*start, *length);
    }
    // The zone is taken as it stands, negative numbers too; files rely on it.
    f.m_Zone_Format_StartPos = NumberAt(list, number++);
    f.m_Zone_Format_Length = NumberAt(list, number);
}

void ReadPadding(TextView list, TelegramFormat& format) {
    const int count = NumberAt(list, 0);
    const int character = NumberAt(list, 1);
    const bool isValid = count >= 1 && character >= kLowestCharacter && character <= kHighestCharacter;
    format.m_Padding_Count = isValid ? count : 0;
    format.m_Padding_Character = isValid ? character : 0;
}

bool Begins(TextView row, TextView keyword, TextView& value) {
    if (!EqualsNoCase(row.substr(0, keyword.size()), keyword)) return false;
    value = row.substr(keyword.size());
    return true;
}

}  // namespace

bool IdCodeDirectives::Take(TextView row) {
    TextView value;
    if (!hasFormat_ && Begins(row, kFormat, value)) {
        hasFormat_ = true;
        ReadFormat(value, format_);
    } else if (!hasPadding_ && Begins(row, kPadding, value)) {
        hasPadding_ = true;
        ReadPadding(value, format_);
    } else if (!zeroTrim_ && Begins(row, kZeroTrim, value)) {
        zeroTrim_ = LeadingInt16(value);
    } else {
        return false;
    }
    return true;
}

IdCodeRow ReadIdCodeRow(TextView row) {
    const auto fields = RowFields<11>(row);
    const auto trimmed = [&fields](std::size_t number) { return TrimBlanks(fields[number]); };
    return {.key = UpperCase(trimmed(0)),
            .objectName = fields[1],
            .schedule = trimmed(2),
            .mapName = fields[3],
            .exportAlarmCode = trimmed(4),
            .exportProtocol = trimmed(5),
            .customer = trimmed(6),
            .matchCallerToAccept = trimmed(7).empty() || trimmed(7) == "1",
            .matchCallerForAliveTest = trimmed(8) == "1",
            .resetIdCode = trimmed(9),
            .schedule2 = trimmed(10)};
}

Text IdCodeRow::IdCode() const {
    return GetField(key, 0, "/");
}

Text IdCodeRow::Caller() const {
    return GetField(key, 1, "/");
}

IdCodeFile ReadIdCodeFile(TextView content) {
    IdCodeFile file;
    IdCodeDirectives directives;
    for (const TextView row : SetRows(content)) {
        if (!directives.Take(row)) file.rows.push_back(ReadIdCodeRow(row));
    }
    file.format = directives.Format();
    file.zeroTrim = directives.ZeroTrim();
    return file;
}

Text IdCodeFileName(TextView set) {
    return Text("Settings\\").append(set).append(".IDCode");
}

}  // namespace nordkeep
