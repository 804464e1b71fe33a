#pragma once

#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

/// A sound file with silence of a tenth of a second.
inline Text SilentWaveFile() {
    const auto number = [](std::uint32_t value, int bytes) {
        Text text;
        for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
        return text;
    };
    const Text data(800, '\x80');
    const Text format =
        number(1, 2) + number(1, 2) + number(8000, 4) + number(8000, 4) + number(1, 2) + number(8, 2);
    return "RIFF" + number(36 + 800, 4) + "WAVEfmt " + number(16, 4) + format + "data" + number(800, 4) +
           data;
}

}  // namespace nordkeep
