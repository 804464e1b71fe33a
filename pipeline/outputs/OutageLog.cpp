#include "pipeline/outputs/OutageLog.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNotReached = 5220;
constexpr int kTextReached = 5221;

}  // namespace

void OutageLog::NoteFailure(const Text& line, const Text& why) {
    if (std::exchange(isOut_, true)) return;
    const Text behind = why.empty() ? line : line + " (" + why + ")";
    log_.WriteSysLog(language_.GetLanguageText(kTextNotReached) + behind, LogKind::Failure);
}

void OutageLog::NoteReached(const Text& line) {
    if (!std::exchange(isOut_, false)) return;
    log_.WriteSysLog(language_.GetLanguageText(kTextReached) + line, LogKind::Information);
}

}  // namespace nordkeep
