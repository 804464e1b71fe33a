#include "console/window/LinesPage.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kPeriodMs = 1000;

}  // namespace

bool LinesPage::IsHeld() const {
    const LineFigures* line = rows_.LineOf(selection_.current);
    return line && line->state == LineState::Held;
}

void LinesPage::ToggleHeld() {
    if (const LineFigures* line = rows_.LineOf(selection_.current)) control_.Hold(line->name, !IsHeld());
}

Text LinesPage::KeyOf(const Text& description) const {
    const auto found = std::ranges::find(lines_, description, &LineFigures::description);
    return found != lines_.end() ? found->name : Text();
}

bool LinesPage::Tick(int elapsedMs) {
    sinceMs_ += elapsedMs;
    if (sinceMs_ < kPeriodMs) return false;
    sinceMs_ = 0;
    lines_ = control_.Lines();
    rows_.Show(lines_);
    rows_.Flush();
    return true;
}

}  // namespace nordkeep
