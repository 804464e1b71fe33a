#pragma once

#include "platform/OleDate.h"

#include <ctime>

namespace nordkeep {

/// The local wall time of a moment, with milliseconds.
OleDate LocalTime(const timespec& moment);

}  // namespace nordkeep
