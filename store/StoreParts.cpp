#include "store/StoreParts.h"

namespace nordkeep {

void StoreParts::LogCount(int textNumber, std::size_t count, LogKind kind, TextView behind) const {
    if (count == 0) return;
    Text line = language.GetLanguageText(textNumber) + std::to_string(count);
    log.WriteSysLog(line.append(behind), kind);
}

}  // namespace nordkeep
