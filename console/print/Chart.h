#pragma once

#include "platform/Text.h"

#include <cstdint>
#include <vector>

namespace nordkeep {

/// A chart of bars, as values.
struct Chart {
    struct Bar {
        Text label{};  // below; empty: none
        std::int32_t value = 0;
    };
    Text title{};
    std::vector<Bar> bars{};
    std::int32_t limit = 0;  // a line across; 0: none
    Text limitText{};
};

}  // namespace nordkeep
