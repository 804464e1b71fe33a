#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// Bytes that AES takes at a time.
inline constexpr std::size_t kAesBlock = 16;

/// True for the lengths that a key can have: 16, 24 or 32 bytes.
constexpr bool IsAesKeyLength(std::size_t bytes) {
    return bytes == 16 || bytes == 24 || bytes == 32;
}

/// AES in CBC mode with a start value of zeros. It fills nothing up: `plain` is whole blocks. Empty for a key
/// or a length that cannot be.
Text AesCbcEncrypt(TextView key, TextView plain);
/// The same way back. A wrong key is not noticed here: it gives other bytes.
Text AesCbcDecrypt(TextView key, TextView cipher);

}  // namespace nordkeep
