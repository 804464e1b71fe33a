#pragma once

#include "platform/Text.h"
#include "runtime/CentreState.h"

#include <vector>

namespace nordkeep {

// What a server tells those clients that have asked for it: how its lines do, and what is wrong. Each entry
// is a text of its own, so that a later copy can put more behind what an earlier one reads.

/// Message 31.
Text LinesPayload(const std::vector<LineFigures>& lines);
/// A state that is not known reads as an unusable line.
std::vector<LineFigures> ReadLines(TextView payload);

/// Message 32.
Text ConditionsPayload(const std::vector<ConditionFact>& facts);
/// Kinds that are not known are left out.
std::vector<ConditionFact> ReadConditions(TextView payload);

struct LineAccounts {
    Text line{};  // its name
    std::vector<LineAccount> accounts{};
};

/// Message 37 to the client.
Text AccountsPayload(const LineAccounts& accounts);
LineAccounts ReadAccounts(TextView payload);

}  // namespace nordkeep
