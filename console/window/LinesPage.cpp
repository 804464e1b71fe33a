#include "console/window/LinesPage.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kPeriodMs = 1000;
constexpr int kCaptionAccount = 5250;
constexpr int kCaptionOutput = 5258;
constexpr int kCaptionWaiting = 5259;

/// Ways out have one word that is the same in every language, and a title.
struct OutputTitle {
    TextView name{};
    int caption = 0;
};
constexpr OutputTitle kOutputs[] = {{"queue", 5253},   {"relay", 5254},  {"printer", 5255},
                                    {"spooler", 5256}, {"torvex", 5257}, {"comcall", 5260}};

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
    for (const OutputState& output : control_.Outputs()) rows.push_back(RowOf(output));
    return rows;
}

LineFigures LinesPage::RowOf(const OutputState& output) const {
    const auto title = std::ranges::find(kOutputs, output.name, &OutputTitle::name);
    const bool isNamed = title != std::end(kOutputs);
    return {
        .name = "/" + output.name,
        .description = isNamed ? captions_(title->caption) : UpperCase(output.name),
        .kind = captions_(kCaptionOutput),
        .state = output.isUp ? LineState::Connected : LineState::Failed,
        .caller = output.waiting > 0 ? captions_(kCaptionWaiting, {std::to_string(output.waiting)}) : Text()};
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
