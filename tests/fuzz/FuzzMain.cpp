// One libFuzzer program for each target; NORDKEEP_FUZZ_TARGET names it.

#include "tests/fuzz/Targets.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const nordkeep::FuzzTarget* const target = [] {
        for (const nordkeep::FuzzTarget& candidate : nordkeep::FuzzTargets()) {
            if (std::string_view(candidate.name) == NORDKEEP_FUZZ_TARGET) return &candidate;
        }
        std::abort();
    }();
    target->run({reinterpret_cast<const char*>(data), size});
    return 0;
}
