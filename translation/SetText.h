#pragma once

#include "platform/Text.h"

#include <vector>

namespace nordkeep {

/// One line of a set's file as an editor writes it.
struct SetLine {
    bool isRow = false;
    Text text{};
};

/// The lines of an .IDCode file in the order in which they are written: the comments in front of the first
/// object and all directives, the rows, and then the comments that stood between and behind them.
std::vector<SetLine> IdCodeLines(TextView content);
/// The same of a .TypeCode file, which has no directives.
std::vector<SetLine> TypeCodeLines(TextView content);

/// The values of an object as they are edited. The first field of its row is two of them.
enum ObjectValue : std::size_t {
    kObjectIdCode,
    kObjectCaller,
    kObjectName,
    kObjectSchedule,
    kObjectMap,
    kObjectExportCode,
    kObjectExportProtocol,
    kObjectCustomer,
    kObjectMatchToAccept,
    kObjectMatchForAliveTest,
    kObjectResetIdCode,
    kObjectSchedule2,
    kObjectValues
};
/// "1" or "0" for the two switches.
std::vector<Text> ValuesOfObject(TextView row);
/// The row as it is written: a schedule whose leading number is not above 0 is left out. What stood behind
/// the last field of the row `before` stays.
Text ObjectRow(const std::vector<Text>& values, TextView before);
/// The same with every schedule as it stands.
Text ObjectRowAsTyped(const std::vector<Text>& values, TextView before);
/// The row loses a schedule when it is written, though that means something.
bool LosesSchedule(const std::vector<Text>& values);

enum TypeValue : std::size_t { kTypeCode, kTypePriority, kTypeName, kTypeResetCode, kTypeValues };
std::vector<Text> ValuesOfType(TextView row);
Text TypeRow(const std::vector<Text>& values, TextView before);

}  // namespace nordkeep
