// One libFuzzer program for each target; NORDKEEP_FUZZ_TARGET names it.

#include "platform/Files.h"
#include "tests/fuzz/Targets.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

const nordkeep::FuzzTarget& Target() {
    for (const nordkeep::FuzzTarget& candidate : nordkeep::FuzzTargets()) {
        if (std::string_view(candidate.name) == NORDKEEP_FUZZ_TARGET) return candidate;
    }
    std::abort();
}

}  // namespace

/// Writes the seeds into the folder that NORDKEEP_SEEDS names, for the fuzzer to begin with.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* const folder = std::getenv("NORDKEEP_SEEDS");
    int number = 0;
    for (const nordkeep::Text& seed : Target().seeds) {
        if (folder) nordkeep::WriteFile(std::string(folder) + "/seed" + std::to_string(number++), seed);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const nordkeep::FuzzTarget& target = Target();
    target.run({reinterpret_cast<const char*>(data), size});
    return 0;
}
