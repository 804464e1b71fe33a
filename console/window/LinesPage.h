#pragma once

#include "console/lists/LineRows.h"
#include "console/lists/RowSelection.h"
#include "console/setup/LineControl.h"

namespace nordkeep {

/// The page of the lines: how each does, and what can be done to it. The senders of a line that many share
/// stand below it, the silent ones first, and the ways out behind all lines.
class LinesPage {
 public:
    LinesPage(LineControl& control, const Captions& captions, const Clock& clock)
        : control_(control), captions_(captions), rows_(captions, clock) {}

    LineRows& Rows() { return rows_; }
    void Select(RowSelection selection) { selection_ = std::move(selection); }
    const RowSelection& Selection() const { return selection_; }
    bool IsAnySelected() const { return selection_.IsIn(rows_); }
    /// The selected line is closed by hand.
    bool IsHeld() const;

    /// Closes the selected line, or opens it again.
    void ToggleHeld();
    /// The row of a line with this description; empty for none.
    Text KeyOf(const Text& description) const;

    /// About once a second the lines are asked how they do; true when they were.
    bool Tick(int elapsedMs);
    const std::vector<LineFigures>& Lines() const { return lines_; }

 private:
    std::vector<LineFigures> WithAccounts() const;
    LineFigures RowOf(const OutputState& output) const;

    LineControl& control_;
    const Captions& captions_;
    LineRows rows_;
    RowSelection selection_{};
    std::vector<LineFigures> lines_{};
    int sinceMs_ = 1000;
};

}  // namespace nordkeep
