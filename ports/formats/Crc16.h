#pragma once

#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

/// The check of T1 frames: polynomial 0x8005 in reflected form, start value 0, no final inversion
/// ("123456789" gives BB3D). Equipment that checks in another way needs only this function changed.
std::uint16_t CRC16(TextView bytes);

}  // namespace nordkeep
