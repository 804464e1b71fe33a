#pragma once

#include "status/StatusFacts.h"

#include <string>

namespace nordkeep {

/// The figures of a copy in the text form that monitoring systems collect.
std::string MetricsText(const StatusFacts& facts, const std::map<int, std::size_t>& alarmsByStatus,
                        const CommitTimes& times, OleDate now);

}  // namespace nordkeep
