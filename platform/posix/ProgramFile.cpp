#include "platform/ProgramFile.h"

namespace nordkeep {

NativePath ProgramFile() {
    return CanonicalPath("/proc/self/exe").value_or(NativePath());
}

NativePath ProgramFolder() {
    const NativePath file = ProgramFile();
    const std::size_t slash = file.rfind('/');
    return slash == NativePath::npos ? "." : file.substr(0, slash == 0 ? 1 : slash);
}

}  // namespace nordkeep
