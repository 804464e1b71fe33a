#include "translation/SetText.h"

#include "runtime/Fields.h"
#include "translation/AliveTestSchedule.h"
#include "translation/IdCodeFile.h"
#include "translation/SetRows.h"

#include <iterator>

namespace nordkeep {
namespace {

constexpr std::size_t kObjectFields = 11;
constexpr std::size_t kTypeFields = 4;

bool IsComment(TextView line) {
    const TextView trimmed = TrimBlanks(line);
    return trimmed.empty() || trimmed.front() == ';';
}

/// Puts the lines of a file into the order in which they are written.
class LineSorter {
 public:
    void Comment(TextView line) { (rows_.empty() ? header_ : trailer_).push_back({false, Text(line)}); }
    void Directive(TextView line) { header_.push_back({false, Text(line)}); }
    void Row(TextView line) { rows_.push_back({true, Text(line)}); }
    std::vector<SetLine> Sorted() {
        for (auto* part : {&rows_, &trailer_})
            header_.insert(header_.end(), std::make_move_iterator(part->begin()),
                           std::make_move_iterator(part->end()));
        return std::move(header_);
    }

 private:
    std::vector<SetLine> header_{};
    std::vector<SetLine> rows_{};
    std::vector<SetLine> trailer_{};
};

/// What stands behind so many fields; empty for nothing.
TextView Behind(TextView row, std::size_t fields) {
    for (; fields > 0; --fields) {
        const std::size_t end = row.find(';');
        if (end == TextView::npos) return {};
        row.remove_prefix(end + 1);
    }
    return TrimBlanks(row);
}

Text WrittenSchedule(const Text& schedule) {
    return LeadingNumber(schedule) > 0 ? Text(TrimBlanks(schedule)) : Text();
}

Text RowOf(std::initializer_list<TextView> fields, TextView behind) {
    Text row;
    for (const TextView field : fields) row.append(field).append(";");
    return row.append(behind);
}

}  // namespace

std::vector<SetLine> IdCodeLines(TextView content) {
    LineSorter lines;
    IdCodeDirectives directives;
    for (const TextView line : Lines(content)) {
        if (IsComment(line)) {
            lines.Comment(line);
        } else if (directives.Take(TrimBlanks(line))) {
            // Of two of a kind the first is the directive, so that it stays in front of all rows.
            lines.Directive(line);
        } else {
            lines.Row(line);
        }
    }
    return lines.Sorted();
}

std::vector<SetLine> TypeCodeLines(TextView content) {
    LineSorter lines;
    for (const TextView line : Lines(content)) IsComment(line) ? lines.Comment(line) : lines.Row(line);
    return lines.Sorted();
}

std::vector<Text> ValuesOfObject(TextView text) {
    const IdCodeRow row = ReadIdCodeRow(TrimBlanks(text));
    std::vector<Text> values(kObjectValues);
    values[kObjectIdCode] = row.IdCode();
    values[kObjectCaller] = row.Caller();
    values[kObjectName] = row.objectName;
    values[kObjectSchedule] = row.schedule;
    values[kObjectMap] = row.mapName;
    values[kObjectExportCode] = row.exportAlarmCode;
    values[kObjectExportProtocol] = row.exportProtocol;
    values[kObjectCustomer] = row.customer;
    values[kObjectMatchToAccept] = row.matchCallerToAccept ? "1" : "0";
    values[kObjectMatchForAliveTest] = row.matchCallerForAliveTest ? "1" : "0";
    values[kObjectResetIdCode] = row.resetIdCode;
    values[kObjectSchedule2] = row.schedule2;
    return values;
}

Text ObjectRowAsTyped(const std::vector<Text>& values, TextView before) {
    Text code = UpperCase(TrimBlanks(values[kObjectIdCode]));
    const TextView caller = TrimBlanks(values[kObjectCaller]);
    if (!caller.empty()) code.append("/").append(UpperCase(caller));
    return RowOf({code, values[kObjectName], TrimBlanks(values[kObjectSchedule]), values[kObjectMap],
                  TrimBlanks(values[kObjectExportCode]), TrimBlanks(values[kObjectExportProtocol]),
                  TrimBlanks(values[kObjectCustomer]), values[kObjectMatchToAccept] == "1" ? "1" : "0",
                  values[kObjectMatchForAliveTest] == "1" ? "1" : "0", TrimBlanks(values[kObjectResetIdCode]),
                  TrimBlanks(values[kObjectSchedule2])},
                 Behind(before, kObjectFields));
}

Text ObjectRow(const std::vector<Text>& values, TextView before) {
    std::vector<Text> written = values;
    written[kObjectSchedule] = WrittenSchedule(values[kObjectSchedule]);
    written[kObjectSchedule2] = WrittenSchedule(values[kObjectSchedule2]);
    return ObjectRowAsTyped(written, before);
}

bool LosesSchedule(const std::vector<Text>& values) {
    const auto isLost = [](const Text& schedule) {
        return IsScheduleInUse(schedule) && WrittenSchedule(schedule).empty();
    };
    return isLost(values[kObjectSchedule]) || isLost(values[kObjectSchedule2]);
}

std::vector<Text> ValuesOfType(TextView row) {
    std::vector<Text> values;
    for (const TextView field : RowFields<kTypeFields>(TrimBlanks(row)))
        values.emplace_back(TrimBlanks(field));
    return values;
}

Text TypeRow(const std::vector<Text>& values, TextView before) {
    return RowOf({TrimBlanks(values[kTypeCode]), TrimBlanks(values[kTypePriority]),
                  TrimBlanks(values[kTypeName]), TrimBlanks(values[kTypeResetCode])},
                 Behind(before, kTypeFields));
}

}  // namespace nordkeep
