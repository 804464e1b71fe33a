#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// A telegram with a right end and check, made independently of the program's own writer; `body` holds
/// positions 2 to 24.
inline Text RobofonTelegramOf(const Text& body) {
    const Text inner = body + '\x03';
    char sum = 0;
    for (const char c : inner) sum = static_cast<char>(sum ^ c);
    return '\x02' + inner + sum;
}

/// An event of receiver 1, line 1. A code that is shorter than eight characters is filled with blanks.
inline Text RobofonTelegram(const Text& code, char classCode = '0') {
    Text id = code;
    id.resize(8, ' ');
    return RobofonTelegramOf("  P2405171345\x11" + Text(1, classCode) + id);
}

}  // namespace nordkeep
