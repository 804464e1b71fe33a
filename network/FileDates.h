#pragma once

#include "platform/OleDate.h"

#include <cstdint>

namespace nordkeep {

/// A file's time as message 20 carries it: seconds since 1970 by the local clock, less an hour; 0 for never
/// and for a time before 1970.
std::int32_t FileDateToLong(OleDate date);
/// The time that a client makes of it; never for 0 and -1. The hour is not added back: such a time compares
/// with others of its kind only.
OleDate LongToFileDate(std::int32_t value);

}  // namespace nordkeep
