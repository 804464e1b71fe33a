#pragma once

#include <cstddef>
#include <cstdint>

namespace nordkeep {

/// What this process uses of the machine at the moment; zeros where the system does not tell.
struct ProcessFacts {
    std::uint64_t residentBytes = 0;
    std::size_t openDescriptors = 0;
};
ProcessFacts PresentProcessFacts();

}  // namespace nordkeep
