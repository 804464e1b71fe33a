#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// Where what is done at this copy itself is done.
inline constexpr const char* kHere = "local";

/// Who does something, for the journal: the system itself unless a station says otherwise.
struct Doer {
    Text user{};     // login name; empty where nobody logs in
    Text station{};  // kHere, or the address of a client
};

}  // namespace nordkeep
