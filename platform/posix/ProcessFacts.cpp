#include "platform/ProcessFacts.h"

#include "platform/posix/FolderScan.h"

#include <unistd.h>

#include <fstream>

namespace nordkeep {

ProcessFacts PresentProcessFacts() {
    ProcessFacts facts;
    std::uint64_t size = 0;
    std::uint64_t resident = 0;
    if (std::ifstream pages("/proc/self/statm"); pages >> size >> resident)
        facts.residentBytes = resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    ScanFolder("/proc/self/fd", [&](const FolderEntry&) { ++facts.openDescriptors; });
    if (facts.openDescriptors > 0) --facts.openDescriptors;  // the look itself
    return facts;
}

}  // namespace nordkeep
