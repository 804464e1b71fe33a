#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

namespace nordkeep {

/// So many seconds as "12 s", "3:07", "2:15:00" or "3 d 04:00". What is below 0 is 0.
Text SpanText(std::int64_t seconds);
/// The span between two times, which a clock change can turn round.
Text AgeText(OleDate from, OleDate to);

}  // namespace nordkeep
