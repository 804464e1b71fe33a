#include "console/window/LinesPage.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kPeriodMs = 1000;
constexpr int kCaptionAccount = 5250;

/// No line has such a name.
Text KeyOfAccount(const LineFigures& line, const LineAccount& account) {
    return line.name + "/" + account.name;
}

}  // namespace

bool LinesPage::IsHeld() const {
    const LineFigures* line = rows_.LineOf(selection_.current);
    return line && line->state == LineState::Held;
}

void LinesPage::ToggleHeld() {
    const auto line = std::ranges::find(lines_, selection_.current, &LineFigures::name);
    if (line != lines_.end()) control_.Hold(line->name, !IsHeld());
}

Text LinesPage::KeyOf(const Text& description) const {
    const auto found = std::ranges::find(lines_, description, &LineFigures::description);
    return found != lines_.end() ? found->name : Text();
}

std::vector<LineFigures> LinesPage::WithAccounts() const {
    std::vector<LineFigures> rows;
    for (const LineFigures& line : lines_) {
        rows.push_back(line);
        for (const LineAccount& account : control_.Accounts(line.name))
            rows.push_back({.name = KeyOfAccount(line, account),
                            .description = "    " + account.name,
                            .kind = captions_(kCaptionAccount),
                            .state = account.isSilent ? LineState::Quiet : LineState::Open,
                            .lastTraffic = account.lastMessage});
    }
    return rows;
}

bool LinesPage::Tick(int elapsedMs) {
    sinceMs_ += elapsedMs;
    if (sinceMs_ < kPeriodMs) return false;
    sinceMs_ = 0;
    lines_ = control_.Lines();
    rows_.Show(WithAccounts());
    rows_.Flush();
    return true;
}

}  // namespace nordkeep
