#include "runtime/CentreState.h"

#include <algorithm>

namespace nordkeep {

void DateFacts(std::vector<ConditionFact>& facts, const std::vector<ConditionFact>& before, OleDate now) {
    for (ConditionFact& fact : facts) {
        if (!fact.since.IsNever()) continue;
        const auto known = std::ranges::find_if(before, [&fact](const ConditionFact& old) {
            return old.kind == fact.kind && old.name == fact.name;
        });
        fact.since = known != before.end() ? known->since : now;
    }
}

}  // namespace nordkeep
